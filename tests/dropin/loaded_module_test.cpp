// The module loaded at run time into a program that has another client of the same names.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "other_client_checks.h"
#include "simhost/server.h"

namespace {

TEST(LoadedModule, ReadsAHostBesideTheProgramsOwnClient) {
    simhost::Server server(simhost::HostDescription::Builtin(), {});
    ExpectOtherClientWorks();
    ASSERT_EQ(dlopen(KALVEX_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr) << "loaded already";

    void* const plugin = dlopen(PORT_COUNTER, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << dlerror();
    ASSERT_NE(dlopen(KALVEX_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
    const auto count_ports = reinterpret_cast<int (*)(std::uint16_t)>(dlsym(plugin, "CountPorts"));
    ASSERT_NE(count_ports, nullptr) << dlerror();
    ExpectOtherClientWorks();
    EXPECT_EQ(count_ports(server.port()), 4);
    ExpectOtherClientWorks();
    EXPECT_EQ(dlclose(plugin), 0);
    ExpectOtherClientWorks();
}

}  // namespace
