// One host of a run, with the account that it is read by.
#pragma once

#include <memory>
#include <vector>

#include "fleet/account.h"
#include "fleet/host_list.h"

namespace fleet {

struct Task {
    HostEntry entry;
    std::shared_ptr<Account> account;
};

}  // namespace fleet
