#include "runner/bridges.h"

#include "libdtv/quiet.h"
#include "runner/virtual_machine.h"

#include <gui/Surface.h>

#include <cstdint>

namespace bench {
namespace {

struct HandVariant {
    const char* name;
    hand::Variant variant;
    bool looks_up;
};
constexpr HandVariant kHandVariants[] = {
    {"hand", hand::Variant::kKept, false},
    {"floor", hand::Variant::kKeptWithLines, false},
    {"hand-lookups", hand::Variant::kLooksUp, true},
    {"floor-lookups", hand::Variant::kLooksUpWithLines, true},
};

/// The surface of all planes; never given back.
jint surfaceAddress() {
    static android::Surface* const surface = [] {
        auto* const made = new android::Surface;
        made->incStrong(made);
        return made;
    }();
    return static_cast<jint>(reinterpret_cast<uintptr_t>(surface));
}

jclass variantsClass() {
    static const jclass variants = findClass("tenrik/bench/Variants");
    return variants;
}

jobject makeProxy(const char* method) {
    const jmethodID make = findStaticMethod(variantsClass(), method, "()Ljava/lang/Object;");
    const jobject proxy = env()->CallStaticObjectMethod(variantsClass(), make);
    requireNoException(method);
    return proxy;
}

void loadBridge(const std::string& file) {
    const jmethodID load = findStaticMethod(variantsClass(), "load", "(Ljava/lang/String;)V");
    env()->CallStaticVoidMethod(variantsClass(), load, env()->NewStringUTF(file.c_str()));
    requireNoException(file.c_str());
}

} // namespace

std::vector<Bridge>& bridges() {
    static std::vector<Bridge> all;
    return all;
}

void loadBridges(const std::string& file) {
    loadBridge(file);
    bridges().push_back(
        {"bridge", quiet::lastListener(), makeCommandLoop(makeProxy("bridgeProxy")), false});

    const std::string missing = hand::load(vm(), env());
    if (!missing.empty()) {
        giveUp("the hand-written bridge does not find " + missing);
    }
    for (const HandVariant& row : kHandVariants) {
        const jobject proxy = makeProxy("handProxy");
        if (!hand::bind(env(), env()->GetObjectClass(proxy), row.variant)) {
            giveUp(std::string("the natives cannot be bound: ") + row.name);
        }
        bridges().push_back(
            {row.name, hand::listener(row.variant), makeCommandLoop(proxy), row.looks_up});
    }

    const jclass counting = findClass("tenrik/bench/CountingListener");
    env()->CallStaticVoidMethod(counting, findStaticMethod(counting, "install", "()V"));
    requireNoException("install");
}

Result measureLoad(const std::string& what, const std::string& file) {
    constexpr double kMicrosecond = 1000;
    variantsClass();
    const auto lookUp = [] {
        const std::string missing = hand::resolveIds(env());
        if (!missing.empty()) {
            giveUp("not found: " + missing);
        }
    };
    double start = threadTime();
    if (what == "bridge") {
        loadBridge(file);
    } else {
        lookUp();
    }
    const double first = threadTime() - start;
    start = threadTime();
    lookUp();
    const double again = threadTime() - start;
    return {"load",
            "load",
            "us",
            {{what, 1, {first / kMicrosecond}}, {"look-ups again", 1, {again / kMicrosecond}}},
            {}};
}

jobject makeCommandLoop(jobject proxy) {
    const jmethodID make =
        findStaticMethod(variantsClass(), "commandLoop", "(Ljava/lang/Object;I)Ljava/lang/Object;");
    const jobject loop =
        env()->CallStaticObjectMethod(variantsClass(), make, proxy, surfaceAddress());
    requireNoException("commandLoop");
    return env()->NewGlobalRef(loop);
}

Counted countedEvents() {
    static const jclass counting = findClass("tenrik/bench/CountingListener");
    static const jmethodID count = findStaticMethod(counting, "count", "()J");
    static const jmethodID sum = findStaticMethod(counting, "sum", "()J");
    return {env()->CallStaticLongMethod(counting, count),
            env()->CallStaticLongMethod(counting, sum)};
}

} // namespace bench
