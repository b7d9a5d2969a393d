// An application that unloads the module while the name service still works for it.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netdb.h>

#include <condition_variable>
#include <mutex>

namespace {

std::mutex mutex;
std::condition_variable changed;
bool is_released = false;
bool is_answered = false;

}  // namespace

/// The resolver of this program, and so of what it loads.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char*, const char*,
                                                                  const addrinfo*, addrinfo**) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [] { return is_released; });
    is_answered = true;
    changed.notify_all();
    return EAI_NONAME;
}

namespace {

bool IsLoaded(const char* library) {
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
}

TEST(Unloading, LeavesTheLibraryToAThreadThatIsLeftBehind) {
    void* const plugin = dlopen(HOST_READER, RTLD_NOW);
    ASSERT_NE(plugin, nullptr) << dlerror();
    const auto try_host =
        reinterpret_cast<void (*)(const char*, unsigned)>(dlsym(plugin, "TryHost"));
    ASSERT_NE(try_host, nullptr);
    try_host("esx01.example.com", 10);
    dlclose(plugin);
    EXPECT_FALSE(IsLoaded(HOST_READER));
    EXPECT_TRUE(IsLoaded(KALVEX_LIBRARY));
    std::unique_lock lock(mutex);
    is_released = true;
    changed.notify_all();
    changed.wait(lock, [] { return is_answered; });
}

TEST(Unloading, IsDoneWhenNoNameWasResolved) {
    // Started anew, as the test above keeps the library.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            void* const plugin = dlopen(HOST_READER, RTLD_NOW);
            reinterpret_cast<void (*)(const char*, unsigned)>(dlsym(plugin, "TryHost"))("127.0.0.1",
                                                                                        10);
            dlclose(plugin);
            _exit(IsLoaded(KALVEX_LIBRARY) ? 1 : 0);
        },
        ::testing::ExitedWithCode(0), "");
}

}  // namespace
