// The process id that lines show: asked of the system until the library is loaded, kept afterwards,
// and its own in the child of a fork, whether or not a handler of forks can be had.
#include "harness/harness.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

namespace {

using namespace harness;

using Handler = void (*)();

std::atomic<bool> refuse_handlers{false};
std::atomic<int> handlers_of_product{0};
std::atomic<int> other_handlers{0}; ///< of the product, but not of the child alone

bool isOfProduct(void* library) {
    Dl_info info = {};
    return library != nullptr && dladdr(library, &info) != 0 && info.dli_fname != nullptr &&
           std::strstr(info.dli_fname, "libDtv_jni.so") != nullptr;
}

/// The lines of one event that has no handler.
std::vector<TraceLine> linesOfAnEvent(LogRecorder& log) {
    log.take();
    deliver(0x7fffffff, {0, 0, 0, 0, 0, 0, 0, 0});
    return log.take();
}

bool showsId(const std::vector<TraceLine>& lines, pid_t id) {
    return !lines.empty() &&
           lines[0].message.find("pid = " + std::to_string(id) + ", threadid = ") == 0;
}

/// Whether the first line of an event in the child of a fork shows the child's id.
bool childShowsItsOwn(LogRecorder& log) {
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);
        const std::vector<TraceLine> lines = linesOfAnEvent(log);
        _exit(showsId(lines, getpid()) && !showsId(lines, getppid()) ? 0 : 1);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

TEST(ProcessId, IsKeptAndIsTheChildsOwnAfterAFork) {
    ASSERT_EQ(Product::load(), "");
    EXPECT_EQ(handlers_of_product.load(), 1);
    EXPECT_EQ(other_handlers.load(), 0);
    auto log = LogRecorder::install();
    EXPECT_TRUE(showsId(linesOfAnEvent(*log), getpid()));
    EXPECT_TRUE(childShowsItsOwn(*log));
    EXPECT_TRUE(showsId(linesOfAnEvent(*log), getpid()));
}

TEST(ProcessId, IsAskedWhereNoHandlerOfForksCanBeHad) {
    refuse_handlers = true;
    ASSERT_EQ(Product::load(), "");
    EXPECT_EQ(handlers_of_product.load(), 1);
    auto log = LogRecorder::install();
    EXPECT_TRUE(showsId(linesOfAnEvent(*log), getpid()));
    EXPECT_TRUE(childShowsItsOwn(*log));
}

TEST(ProcessId, ARefusedLoadRegistersNothing) {
    EXPECT_NE(Product::loadWithout({"tenrik.service.dtvserver.DtvServerProxy"}), "");
    EXPECT_EQ(handlers_of_product.load(), 0);
}

} // namespace

/// What pthread_atfork calls in the C library: libraries that are loaded later find this one first.
extern "C" __attribute__((visibility("default"))) int
__register_atfork(Handler prepare, Handler parent, Handler child, void* library) {
    if (isOfProduct(library)) {
        ++handlers_of_product;
        other_handlers += prepare != nullptr || parent != nullptr || child == nullptr ? 1 : 0;
        if (refuse_handlers) {
            return ENOMEM;
        }
    }
    using Register = int (*)(Handler, Handler, Handler, void*);
    static const auto next = reinterpret_cast<Register>(dlsym(RTLD_NEXT, "__register_atfork"));
    return next == nullptr ? ENOSYS : next(prepare, parent, child, library);
}
