// An application that has no descriptors left.
#include <fcntl.h>
#include <unistd.h>

#include "support/inventory_test.h"

namespace {

using Zentar::Agentless::Kalvex;

/// Holds all descriptors that the process may still have, while it lives.
class AllDescriptors {
public:
    AllDescriptors() {
        for (int held = Next(); held >= 0; held = Next()) {
            held_.push_back(held);
        }
    }
    ~AllDescriptors() {
        for (const int held : held_) {
            close(held);
        }
    }
    AllDescriptors(const AllDescriptors&) = delete;
    AllDescriptors& operator=(const AllDescriptors&) = delete;

private:
    static int Next() { return open("/dev/null", O_RDONLY | O_CLOEXEC); }

    std::vector<int> held_;
};

class Exhaustion : public support::InventoryTest {};

TEST_F(Exhaustion, OfDescriptorsIsAFailureUntilThereAreSomeAgain) {
    Serve(simhost::HostDescription::Builtin(), Http());
    std::vector<Zentar::ZentarAgentless::InstalledPackage> packages;
    std::unique_ptr<Kalvex> host;
    {
        const AllDescriptors held;
        host = std::make_unique<Kalvex>(info);
        EXPECT_EQ(host->GetInstalledPackages(packages), 1);
        EXPECT_TRUE(packages.empty());
    }
    EXPECT_EQ(host->GetInstalledPackages(packages), 0);
    EXPECT_FALSE(packages.empty());
}

}  // namespace
