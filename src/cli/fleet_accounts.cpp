#include "cli/fleet_accounts.h"

#include <algorithm>
#include <map>
#include <utility>

#include "cli/password.h"
#include "cli/password_file.h"

namespace command {

using fleet::Account;
using fleet::HostEntry;
using fleet::Task;

namespace {

class AccountBook {
public:
    AccountBook(const std::vector<HostEntry>& hosts, const FleetOptions& options) {
        const bool needs_common = std::ranges::any_of(hosts, [](const HostEntry& host) {
            return host.password_file.empty() && !host.user.empty();
        });
        if (needs_common) {
            HostOptions asked = options.defaults;
            asked.password_file.clear();
            asked.host = std::to_string(hosts.size()) + " hosts";
            if (asked.user.empty()) {
                asked.user = "the users";
            }
            passwords_[""] = PasswordSource(asked).Take();
        }
    }

    std::shared_ptr<Account> Find(const HostEntry& host) {
        const auto [known, is_new] = by_file_.try_emplace({host.user, host.password_file});
        if (is_new) {
            known->second = WithSamePassword(host.user, PasswordOf(host));
        }
        return known->second;
    }

private:
    const Zentar::Secret& PasswordOf(const HostEntry& host) {
        const auto [known, is_new] = passwords_.try_emplace(host.password_file);
        if (is_new && !host.password_file.empty()) {
            known->second = ReadPasswordFile(host.password_file, "password_file");
        }
        return known->second;
    }

    std::shared_ptr<Account> WithSamePassword(const std::string& user,
                                              const Zentar::Secret& password) {
        const auto found = std::ranges::find_if(accounts_, [&](const auto& account) {
            return account->user() == user && account->password().text() == password.text();
        });
        if (found != accounts_.end()) {
            return *found;
        }
        return accounts_.emplace_back(
            std::make_shared<Account>(user, Zentar::Secret(password.text())));
    }

    std::map<std::string, Zentar::Secret> passwords_;  ///< by file; the common one by ""
    std::map<std::pair<std::string, std::string>, std::shared_ptr<Account>> by_file_;
    std::vector<std::shared_ptr<Account>> accounts_;
};

}  // namespace

std::vector<Task> TasksOf(const std::vector<HostEntry>& hosts, const FleetOptions& options) {
    AccountBook book(hosts, options);
    std::vector<Task> tasks;
    tasks.reserve(hosts.size());
    for (const HostEntry& host : hosts) {
        tasks.push_back({host, book.Find(host)});
    }
    return tasks;
}

}  // namespace command
