// Replaces what identifies an array or its site in recorded exchanges (serial numbers, WWNs, IP
// addresses, IQNs, host and user names) by stand-ins of the same kind. A value gets the same
// stand-in wherever and whenever it appears, so that the relations between records survive.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace HuaweiTransport {

class RecordingAnonymiser {
 public:
  // Learns what the exchange reveals, from the resource and from both bodies, then rewrites them.
  // `resource` is the path and query of the request; the bodies are JSON texts, of which only
  // string values change.
  void anonymise(std::string& resource, std::string& request, std::string& answer);

  // The stand-in of a value already met; empty when there is none.
  std::string standInFor(const std::string& value) const;

 private:
  enum Kind { kSerial, kWwn, kIpv4, kIpv6, kIqn, kHost, kUser, kArray, kKinds };

  void learn(std::string_view collection, std::string_view key, std::string_view value);
  void learnFromBody(std::string_view collection, std::string& body);
  void learnFromResource(std::string_view collection, const std::string& resource);
  void rewriteBody(std::string& body);
  void rewriteResource(std::string& resource) const;
  void rewriteAddresses(std::string& text);
  std::string makeStandIn(Kind kind, std::string_view value);

  std::map<std::string, std::string, std::less<>> standIns_;
  unsigned counts_[kKinds] = {};
};

}  // namespace HuaweiTransport
