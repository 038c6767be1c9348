#include "RecordingAnonymiser.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "JsonStrings.h"

namespace HuaweiTransport {

namespace {

const char kDevicePrefix[] = "/deviceManager/rest/";

bool isSeparator(char c) { return c == '/' || c == '?' || c == '&' || c == '='; }

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A piece of a URL as the value it carries: names with blanks or other bytes arrive encoded.
std::string percentDecoded(std::string_view piece) {
  std::string value;
  value.reserve(piece.size());
  for (std::size_t at = 0; at < piece.size(); ++at) {
    if (piece[at] == '%' && at + 2 < piece.size() && hexValue(piece[at + 1]) >= 0 && hexValue(piece[at + 2]) >= 0) {
      value += static_cast<char>(hexValue(piece[at + 1]) * 16 + hexValue(piece[at + 2]));
      at += 2;
    } else {
      value += piece[at];
    }
  }
  return value;
}

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

bool startsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

bool isAddress(int family, std::string_view value) {
  if (value.empty() || value.size() > 45) return false;
  const std::string text(value);
  unsigned char buffer[16];
  return inet_pton(family, text.c_str(), buffer) == 1;
}

// The collection a request names: "host" in "/deviceManager/rest/<device>/host?range=...".
std::string_view collectionOf(std::string_view resource) {
  if (!startsWith(resource, kDevicePrefix)) return std::string_view();
  std::string_view rest = resource.substr(sizeof kDevicePrefix - 1);
  const std::size_t device = rest.find('/');
  if (device == std::string_view::npos) return std::string_view();
  rest = rest.substr(device + 1);
  return rest.substr(0, rest.find_first_of("/?"));
}

// A dotted quad of numbers up to 255 starting at `at`, not part of a longer run of digits and dots.
std::size_t ipv4Length(const std::string& text, std::size_t at) {
  if (at > 0 && (std::isdigit(static_cast<unsigned char>(text[at - 1])) || text[at - 1] == '.')) return 0;
  std::size_t end = at;
  while (end < text.size() && (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '.')) ++end;
  // A full stop after an address ends the sentence, not the address.
  while (text[end - 1] == '.') --end;
  const auto dots = std::count(text.begin() + at, text.begin() + end, '.');
  return dots == 3 && isAddress(AF_INET, std::string_view(text).substr(at, end - at)) ? end - at : 0;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Every dotted quad holds a digit, a dot and a digit in a row. Most texts with a dot (file names,
// a change-list page full of them) hold none, and are then left without a copy or a byte-wise scan.
bool mayHoldIpv4(std::string_view text) {
  for (std::size_t dot = text.find('.', 1); dot != std::string_view::npos && dot + 1 < text.size();
       dot = text.find('.', dot + 1)) {
    if (isDigit(text[dot - 1]) && isDigit(text[dot + 1])) return true;
  }
  return false;
}

}  // namespace

// Which values identify the array or its site, by the member that holds them and the collection
// they come from; what any member holds in the shape of an address or an IQN counts as well.
void RecordingAnonymiser::learn(std::string_view collection, std::string_view key, std::string_view value) {
  if (value.empty() || value.front() == '{' || value.find_first_not_of('*') == std::string_view::npos) return;
  if (standIns_.find(value) != standIns_.end()) return;
  Kind kind = kKinds;
  if (key == "username") {
    kind = kUser;
  } else if (contains(key, "WWN") || (collection == "fc_initiator" && key == "ID")) {
    kind = kWwn;
  } else if (contains(key, "SERIAL") || key == "SN" || key == "ESN" || (collection == "system" && key == "ID")) {
    kind = kSerial;
  } else if (collection == "system" && key == "NAME") {
    kind = kArray;
  } else if ((collection == "host" && key == "NAME") || (key == "PARENTNAME" && contains(collection, "initiator"))) {
    kind = kHost;
  } else if (startsWith(value, "iqn.") || startsWith(value, "eui.")) {
    kind = kIqn;
  } else if (isAddress(AF_INET, value)) {
    kind = kIpv4;
  } else if (isAddress(AF_INET6, value)) {
    kind = kIpv6;
  }
  if (kind != kKinds) standIns_.emplace(std::string(value), makeStandIn(kind, value));
}

std::string RecordingAnonymiser::makeStandIn(Kind kind, std::string_view value) {
  const unsigned n = ++counts_[kind];
  char text[64];
  switch (kind) {
    case kIpv4:
      std::snprintf(text, sizeof text, "10.%u.%u.%u", ((n - 1) / 65025) % 256, ((n - 1) / 255) % 255,
                    (n - 1) % 255 + 1);
      return text;
    case kIpv6:
      std::snprintf(text, sizeof text, "fd00::%x", n);
      return text;
    case kIqn:
      std::snprintf(text, sizeof text, "iqn.2000-01.com.example:initiator-%u", n);
      return text;
    case kHost: std::snprintf(text, sizeof text, "host-%u", n); return text;
    case kUser: std::snprintf(text, sizeof text, "user-%u", n); return text;
    case kArray: std::snprintf(text, sizeof text, "array-%u", n); return text;
    case kWwn: {
      // Same length and separators, hex digits counting up from the right.
      std::string standIn(value);
      unsigned rest = n;
      const bool upper = value.find_first_of("ABCDEF") != std::string_view::npos;
      for (auto at = standIn.rbegin(); at != standIn.rend(); ++at) {
        if (!std::isxdigit(static_cast<unsigned char>(*at))) continue;
        *at = (upper ? "0123456789ABCDEF" : "0123456789abcdef")[rest % 16];
        rest /= 16;
      }
      return standIn;
    }
    case kSerial:
    case kKinds:
      break;
  }
  // A serial number: "SN" and the count, as long as the original where it can be.
  std::snprintf(text, sizeof text, "%u", n);
  std::string standIn = "SN";
  const std::size_t digits = std::char_traits<char>::length(text);
  if (value.size() > standIn.size() + digits) standIn.append(value.size() - standIn.size() - digits, '0');
  return standIn + text;
}

void RecordingAnonymiser::learnFromBody(std::string_view collection, std::string& body) {
  rewriteJsonStrings(body, [&](std::string_view key, std::string_view value, std::string&) {
    learn(collection, key, value);
    return false;
  });
}

// Filters ("filter=NAME::h1", "NAME:h1") and object identifiers in the path ("fc_initiator/<WWN>").
void RecordingAnonymiser::learnFromResource(std::string_view collection, const std::string& resource) {
  const std::size_t query = resource.find('?');
  const std::string_view path = std::string_view(resource).substr(0, query);
  const std::size_t named = path.find(std::string(collection) + "/");
  if (!collection.empty() && named != std::string_view::npos) {
    const std::string_view object = path.substr(named + collection.size() + 1);
    learn(collection, "ID", percentDecoded(object.substr(0, object.find('/'))));
  }
  if (query == std::string::npos) return;
  std::string_view rest = std::string_view(resource).substr(query + 1);
  while (!rest.empty()) {
    std::string_view pair = rest.substr(0, rest.find('&'));
    rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
    const std::size_t equals = pair.find('=');
    std::string_view value = equals == std::string_view::npos ? pair : pair.substr(equals + 1);
    const std::size_t colon = value.find(':');
    if (colon == std::string_view::npos) {
      learn(collection, std::string_view(), percentDecoded(value));
      continue;
    }
    const std::string_view key = value.substr(0, colon);
    value.remove_prefix(colon + 1);
    if (!value.empty() && value.front() == ':') value.remove_prefix(1);
    learn(collection, key, percentDecoded(value));
  }
}

void RecordingAnonymiser::rewriteAddresses(std::string& text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!std::isdigit(static_cast<unsigned char>(text[at]))) continue;
    const std::size_t length = ipv4Length(text, at);
    if (length == 0) continue;
    const std::string address = text.substr(at, length);
    learn(std::string_view(), std::string_view(), address);
    const std::string& standIn = standIns_.find(address)->second;
    text.replace(at, length, standIn);
    at += standIn.size() - 1;
  }
}

void RecordingAnonymiser::rewriteBody(std::string& body) {
  rewriteJsonStrings(body, [&](std::string_view, std::string_view value, std::string& replacement) {
    const auto known = standIns_.find(value);
    if (known != standIns_.end()) {
      replacement = known->second;
      return true;
    }
    // An address inside a longer text, such as a description.
    if (!mayHoldIpv4(value)) return false;
    replacement.assign(value);
    rewriteAddresses(replacement);
    return replacement != value;
  });
}

// Each piece of the resource between separators that is a value met before gets its stand-in; in a
// filter ("NAME:h1", "NAME::h1") its value part.
void RecordingAnonymiser::rewriteResource(std::string& resource) const {
  std::string rewritten;
  std::size_t start = 0;
  for (std::size_t at = 0; at <= resource.size(); ++at) {
    if (at < resource.size() && !isSeparator(resource[at])) continue;
    std::string_view piece = std::string_view(resource).substr(start, at - start);
    auto known = standIns_.find(percentDecoded(piece));
    if (known == standIns_.end() && piece.find(':') != std::string_view::npos) {
      const std::size_t value = piece.find_first_not_of(':', piece.find(':'));
      if (value != std::string_view::npos) {
        known = standIns_.find(percentDecoded(piece.substr(value)));
        if (known != standIns_.end()) {
          rewritten += piece.substr(0, value);
          piece = piece.substr(value);
        }
      }
    }
    rewritten += known != standIns_.end() ? std::string_view(known->second) : piece;
    if (at < resource.size()) rewritten += resource[at];
    start = at + 1;
  }
  resource.swap(rewritten);
}

void RecordingAnonymiser::anonymise(std::string& resource, std::string& request, std::string& answer) {
  const std::string collection(collectionOf(resource));
  learnFromResource(collection, resource);
  learnFromBody(collection, request);
  learnFromBody(collection, answer);
  rewriteResource(resource);
  rewriteBody(request);
  rewriteBody(answer);
}

std::string RecordingAnonymiser::standInFor(const std::string& value) const {
  const auto known = standIns_.find(value);
  return known == standIns_.end() ? std::string() : known->second;
}

}  // namespace HuaweiTransport
