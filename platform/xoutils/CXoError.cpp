#include "CXoError.h"

#include <boost/make_shared.hpp>

struct CXoError::Private {
  std::string text;
  YbCodeLocation location;
};

CXoError::CXoError() : code_(0) {}

CXoError::CXoError(int code, const std::string& text, const YbCodeLocation& location)
    : code_(code), private_(boost::make_shared<const Private>(Private{text, location})) {}

CXoError CXoError::Success() { return CXoError(); }

bool CXoError::IsError() const { return code_ < 0; }

int CXoError::GetCode() const { return code_; }

std::string CXoError::AsString() const { return private_ ? private_->text : std::string(); }

YbCodeLocation CXoError::Location() const {
  return private_ ? private_->location : YbCodeLocation("", "", 0);
}
