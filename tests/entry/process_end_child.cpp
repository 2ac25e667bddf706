// A process that loads the bridge, delivers events on the given threads, and ends in the given way,
// with exit code 37.
//
//     process_end_child <load> <events> <end>
#include "harness/harness.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

using namespace harness;

constexpr int exitCode = 37;

[[noreturn]] void fail(const std::string& why) {
    std::fprintf(stderr, "process_end_child: %s\n", why.c_str());
    std::_Exit(1);
}

void need(bool done, const char* what) {
    if (!done) {
        fail(what);
    }
}

int createReply() {
    uint8_t record[8] = {3, 0, 0, 0, 0, 0, 0, 0};
    return dtv::deliverEvent(0x1000004f, record, 8);
}

void postCreateReply() {
    const uint8_t record[8] = {3, 0, 0, 0, 0, 0, 0, 0};
    dtv::postEvent(0x1000004f, record, 8);
}

void callStatic(const char* class_name, const char* name, const char* signature, jint argument) {
    jclass of = env()->FindClass(class_name);
    need(of != nullptr, "no class");
    jmethodID id = env()->GetStaticMethodID(of, name, signature);
    need(id != nullptr, "no method");
    env()->CallStaticVoidMethod(of, id, argument);
}

void systemExit() {
    callStatic("java/lang/System", "exit", "(I)V", exitCode);
}

/// Never joined: it runs until the process has ended.
void forever(void (*work)()) {
    std::thread([work] {
        for (;;) {
            work();
        }
    }).detach();
}

EventThread& foreign() {
    static EventThread& thread = *new EventThread;
    return thread;
}

void deliverOn(const std::string& where) {
    bool flood = where == "flood";
    if (where == "main" || where == "everywhere") {
        need(createReply() == 0, "an event did not arrive");
    }
    if (where == "foreign" || where == "everywhere" || flood) {
        foreign().run([] { need(createReply() == 0, "an event did not arrive"); });
    }
    if (where == "posted" || where == "everywhere" || flood) {
        postCreateReply();
        need(dtv::waitUntilDelivered(std::chrono::seconds(20)), "an event did not arrive");
    }
    if (flood) {
        // Both threads already have their slots: threads that request their first slot at the same
        // time may get the same one.
        forever(&postCreateReply);
        foreign().start([] {
            for (;;) {
                createReply();
            }
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void endBy(const std::string& way) {
    if (way == "exit") {
        std::exit(exitCode);
    } else if (way == "exit-on-foreign") {
        foreign().run([] { std::exit(exitCode); });
    } else if (way == "exit-on-unknown") {
        std::thread([] { std::exit(exitCode); }).join();
    } else if (way == "system-exit") {
        systemExit();
    } else if (way == "system-exit-on-foreign") {
        foreign().run([] { systemExit(); });
    } else if (way == "system-exit-in-callback" || way == "system-exit-in-posted-callback") {
        callStatic("ExitingListener", "install", "()V", 0);
        uint8_t record[8] = {3, 0, 0, 0, 0, 0, 0, 0};
        if (way == "system-exit-in-callback") {
            dtv::deliverEvent(0x10000050, record, 8);
        } else {
            dtv::postEvent(0x10000050, record, 8);
            dtv::waitUntilDelivered(std::chrono::seconds(20));
        }
        fail("the callback did not end the process");
    } else if (way == "destroy" || way == "destroy-and-exit") {
        dtv::stopDelivery();
        endEventThreads();
        VirtualMachine::instance().destroy();
        if (way == "destroy-and-exit") {
            std::exit(exitCode);
        }
    } else {
        need(way == "return", "no such way to end");
    }
}

} // namespace

int main(int argc, char** argv) {
    need(argc == 4, "three arguments are needed");
    // An emulator would name it after itself.
    pthread_setname_np(pthread_self(), "process_end_chi");
    alarm(60); // a process that hangs is killed, which is seen as a signal
    std::string load = argv[1];
    VirtualMachine::instance();
    if (load == "loaded") {
        need(Product::load().empty(), "the bridge was refused");
    } else if (load == "refused") {
        std::string why = Product::loadWithout({"tenrik.service.dtvserver.DtvServerProxy"});
        need(!why.empty(), "the bridge was not refused");
    }
    deliverOn(argv[2]);
    endBy(argv[3]);
    return exitCode;
}
