// Create-or-adopt for the first generation: a creation refused because its name is in use takes
// the object of that name, found by one of the facade's lookups by name, and tells what it took.
#pragma once

#include <string>
#include <utility>

#include "FirstGenerationCall.h"
#include "ZrManageHuawei.h"

// The adoption's lines: a failure when the lookup fails, a format of the name; a level 3 line
// when it answers, a format of the name and the identifier taken.
struct AdoptionTexts {
  const char* lookupFailed;
  const char* taken;
};

template <typename Record>
class AdoptionByLookup final : public FirstGenerationAdoption {
 public:
  // A lookup of the record named `name`, of one kind (a protocol), in a vStore.
  using Lookup = bool (ZrManageHuawei::*)(Record& found, std::string const& kind, std::string const& name,
                                          std::string vstoreId);

  // The identifier of the record found goes to `id`, empty when the lookup answers none.
  AdoptionByLookup(ZrManageHuawei& facade, Lookup lookup, std::string kind, const std::string& name,
                   const std::string& vstoreId, std::string& id, AdoptionTexts texts)
      : m_facade(facade),
        m_lookup(lookup),
        m_kind(std::move(kind)),
        m_name(name),
        m_vstoreId(vstoreId),
        m_id(id),
        m_texts(texts) {}

  bool adopt(FirstGenerationCall& call) override {
    Record found;
    if (!(m_facade.*m_lookup)(found, m_kind, m_name, m_vstoreId)) {
      call.failure(m_texts.lookupFailed, m_name);
      return false;
    }
    m_id = found.id;
    call.line(3, m_texts.taken, m_name, m_id);
    return true;
  }

 private:
  ZrManageHuawei& m_facade;
  Lookup m_lookup;
  const std::string m_kind;
  const std::string& m_name;
  const std::string& m_vstoreId;
  std::string& m_id;
  AdoptionTexts m_texts;
};
