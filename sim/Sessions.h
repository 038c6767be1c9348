// Accounts and the sessions of logged-in clients. A session is proven on every request by
// its base token (header iBaseToken) together with its cookie; either alone is not enough.
#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace arraysim {

struct Account {
  std::string user;
  std::string password;
  std::string vstoreId;  // empty: an array-wide account; otherwise the login answers "vstoreId"
};

struct ArraySession {
  std::string token;   // iBaseToken
  std::string cookie;  // value of the cookie "session"
  std::string user;
  std::string vstoreId;
};

// Thread-safe.
class SessionRegistry {
 public:
  explicit SessionRegistry(std::vector<Account> accounts);

  // A new session, or nothing when no account has this name and password.
  std::optional<ArraySession> login(const std::string& user, const std::string& password);
  // The session that both the token and the Cookie header belong to.
  std::optional<ArraySession> authorise(const std::string& token, const std::string& cookieHeader) const;
  bool logout(const std::string& token);

  void addAccount(Account account);
  void replaceAccounts(std::vector<Account> accounts);
  std::vector<Account> accounts() const;
  std::vector<ArraySession> open() const;
  // Ends every session, e.g. to make clients see the array's -401.
  void closeAll();

  static constexpr const char* kCookieName = "session";

 private:
  std::string randomHex(std::size_t length);

  mutable std::mutex mutex_;
  std::vector<Account> accounts_;
  std::map<std::string, ArraySession> byToken_;
  std::mt19937_64 random_;
};

// The value of one cookie in a Cookie header ("a=1; session=xyz"), empty when absent.
std::string CookieValue(const std::string& cookieHeader, const std::string& name);

}  // namespace arraysim
