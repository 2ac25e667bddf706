#include "runner/bridges.h"

#include "binding/method_table.h"
#include "libdtv/quiet.h"
#include "runner/java_side.h"
#include "runner/virtual_machine.h"

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
    installCounting();
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
    return {std::to_string(kClassCount) + " classes, " + std::to_string(kMethodCount) + " methods",
            "load",
            "us",
            {{what, 1, {first / kMicrosecond}}, {"look-ups again", 1, {again / kMicrosecond}}},
            {}};
}

} // namespace bench
