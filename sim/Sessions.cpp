#include "Sessions.h"

#include <algorithm>

namespace arraysim {

SessionRegistry::SessionRegistry(std::vector<Account> accounts)
    : accounts_(std::move(accounts)), random_(std::random_device{}()) {}

std::string SessionRegistry::randomHex(std::size_t length) {
  static const char kHex[] = "0123456789abcdef";
  std::string text;
  while (text.size() < length) {
    auto bits = random_();
    for (int i = 0; i < 16 && text.size() < length; ++i, bits >>= 4) text.push_back(kHex[bits & 0xF]);
  }
  return text;
}

std::optional<ArraySession> SessionRegistry::login(const std::string& user, const std::string& password) {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto account = std::find_if(accounts_.begin(), accounts_.end(),
                                    [&](const Account& a) { return a.user == user && a.password == password; });
  if (account == accounts_.end()) return std::nullopt;
  ArraySession session{randomHex(64), randomHex(40), account->user, account->vstoreId};
  byToken_[session.token] = session;
  return session;
}

std::optional<ArraySession> SessionRegistry::authorise(const std::string& token, const std::string& cookieHeader) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto it = byToken_.find(token);
  if (it == byToken_.end() || CookieValue(cookieHeader, kCookieName) != it->second.cookie) return std::nullopt;
  return it->second;
}

bool SessionRegistry::logout(const std::string& token) {
  std::lock_guard<std::mutex> lock(mutex_);
  return byToken_.erase(token) > 0;
}

void SessionRegistry::addAccount(Account account) {
  std::lock_guard<std::mutex> lock(mutex_);
  accounts_.push_back(std::move(account));
}

void SessionRegistry::replaceAccounts(std::vector<Account> accounts) {
  std::lock_guard<std::mutex> lock(mutex_);
  accounts_ = std::move(accounts);
}

std::vector<Account> SessionRegistry::accounts() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return accounts_;
}

std::vector<ArraySession> SessionRegistry::open() const {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<ArraySession> sessions;
  for (const auto& entry : byToken_) sessions.push_back(entry.second);
  return sessions;
}

void SessionRegistry::closeAll() {
  std::lock_guard<std::mutex> lock(mutex_);
  byToken_.clear();
}

std::string CookieValue(const std::string& cookieHeader, const std::string& name) {
  std::size_t start = 0;
  while (start < cookieHeader.size()) {
    auto end = cookieHeader.find(';', start);
    if (end == std::string::npos) end = cookieHeader.size();
    auto pair = cookieHeader.substr(start, end - start);
    const auto first = pair.find_first_not_of(' ');
    if (first != std::string::npos) pair.erase(0, first);
    const auto equals = pair.find('=');
    if (equals != std::string::npos && pair.compare(0, equals, name) == 0) return pair.substr(equals + 1);
    start = end + 1;
  }
  return {};
}

}  // namespace arraysim
