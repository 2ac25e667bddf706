// The bridge in a process without memory: the load, and texts that need a copy.
#include "binding/listener.h"

#include <gmock/gmock.h>

#include <dlfcn.h>

#include <atomic>
#include <cstring>
#include <new>

namespace {

using namespace harness;
using testing::HasSubstr;

/// How many allocations of the bridge are refused from now on, and how many were.
std::atomic<int> to_refuse{0};
std::atomic<int> refused{0};

/// Counts what the bridge gives back, while it is watched.
std::atomic<bool> watched{false};
std::atomic<int> given_back{0};

/// Whether a call returns to the bridge.
bool isOfBridge(const void* caller) {
    Dl_info info = {};
    return dladdr(caller, &info) != 0 && info.dli_fname != nullptr &&
           std::strstr(info.dli_fname, "libbinding_probe.so") != nullptr;
}

/// Whether an allocation is refused, by the address that it returns to.
bool refuses(const void* caller) {
    if (to_refuse.load() == 0 || !isOfBridge(caller)) {
        return false;
    }
    --to_refuse;
    ++refused;
    return true;
}

/// While it lives, the bridge's next allocation fails.
class NoMemory {
public:
    NoMemory() { to_refuse = 1; }
    ~NoMemory() { EXPECT_EQ(to_refuse.exchange(0), 0) << "nothing was allocated"; }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;
};

constexpr const char* failed =
    "JNIDtvSvLibListener|1024|5|DEBUG    |OrgNewString|Failure, ret is NULL";
constexpr const char* failed_utf =
    "JNIDtvSvLibListener|1024|5|DEBUG    |OrgNewStringUTF|Failure, ret is NULL";

TEST(WithoutMemory, TheLoadIsRefusedAndNoMethodStaysBound) {
    auto log = LogRecorder::install();
    VirtualMachine::instance();
    {
        NoMemory no_memory;
        EXPECT_THAT(loadProbe(), HasSubstr("unsupported JNI version 0xFFFFFFFF"));
    }
    EXPECT_EQ(StrictJni::calls("UnregisterNatives"), 1);
    EXPECT_EQ(StrictJni::calls("Throw"), 0) << "no exception was pending";
    EXPECT_EQ(StrictJni::calls("ExceptionClear"), 0);
    EXPECT_EQ(StrictJni::globalsMade(), 0);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|JNI_OnLoad|
        Dtv_jni|1024|5|DEBUG    |JNI_OnLoad|pid = <pid>, threadid = <tid>
        Dtv_jni|128|5|FUNCSTART|registerNatives|
        Dtv_jni|256|5|FUNCEND  |registerNatives|ret = 0
        Dtv_jni|256|5|FUNCEND  |JNI_OnLoad|
    )");
    EXPECT_THAT(call("DtvSvLib_Release", {1}), HasSubstr("java.lang.UnsatisfiedLinkError"));
}

/// A text of up to 256 units is copied on the stack.
TEST(WithoutMemory, AUtf16TextOfMoreThan256UnitsIsNull) {
    ASSERT_EQ(loadProbe(), "");
    Listener listener = Listener::loaded();
    auto log = LogRecorder::install();
    const std::string units(2 * 257, 'a');
    {
        NoMemory no_memory;
        EXPECT_EQ(listener.OrgNewString(units.data(), 257), nullptr);
    }
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_TRACE(log->take(), failed);
    const int before = refused;
    to_refuse = 1;
    EXPECT_NE(listener.OrgNewString(units.data(), 256), nullptr);
    to_refuse = 0;
    EXPECT_EQ(refused, before) << "nothing is allocated";
    EXPECT_TRACE(log->take(), "");
    EXPECT_NE(listener.OrgNewString(units.data(), 257), nullptr);
}

/// A text that is modified UTF-8 already is not copied.
TEST(WithoutMemory, AMalformedTextIsNull) {
    ASSERT_EQ(loadProbe(), "");
    Listener listener = Listener::loaded();
    auto log = LogRecorder::install();
    {
        NoMemory no_memory;
        EXPECT_EQ(listener.OrgNewStringUTF("\xff"), nullptr);
    }
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_TRACE(log->take(), failed_utf);
    const int before = refused;
    to_refuse = 1;
    EXPECT_EQ(tree(listener.OrgNewStringUTF("ff")), R"("ff")");
    to_refuse = 0;
    EXPECT_EQ(refused, before) << "nothing is allocated";
    EXPECT_EQ(tree(listener.OrgNewStringUTF("\xff")), R"("\ufffd")");
}

TEST(WithoutMemory, CopiesAreGivenBack) {
    ASSERT_EQ(loadProbe(), "");
    Listener listener = Listener::loaded();
    const std::string units(2 * 257, 'a');
    watched = true;
    EXPECT_NE(listener.OrgNewStringUTF("\xff"), nullptr);
    EXPECT_EQ(given_back.exchange(0), 1);
    EXPECT_NE(listener.OrgNewString(units.data(), 257), nullptr);
    EXPECT_EQ(given_back.exchange(0), 1);
    EXPECT_NE(listener.OrgNewString(units.data(), 256), nullptr);
    EXPECT_EQ(given_back.exchange(0), 0);
    watched = false;
}

} // namespace

extern "C" void __libc_free(void* block);
extern "C" void* __libc_malloc(size_t size);

extern "C" __attribute__((visibility("default"))) void free(void* block) {
    if (watched.load() && isOfBridge(__builtin_return_address(0))) {
        ++given_back;
    }
    __libc_free(block);
}

/// In the place of the C library's: libraries find this one first.
extern "C" __attribute__((visibility("default"))) void* malloc(size_t size) {
    return refuses(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}

/// In the place of the C++ library's. Its memory is given back as that of malloc is.
__attribute__((visibility("default"))) void* operator new(size_t size,
                                                          const std::nothrow_t&) noexcept {
    return refuses(__builtin_return_address(0)) ? nullptr : __libc_malloc(size != 0 ? size : 1);
}
