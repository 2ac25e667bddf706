#include "runner/json.h"

#include "runner/checks.h"
#include "runner/java_side.h"

#include <cstdio>
#include <string>

namespace bench {
namespace {

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        // Nothing that is printed here has other control characters than these.
        result += character == '\n' || character == '\t' ? ' ' : character;
    }
    return result;
}

} // namespace

JsonResults::JsonResults() {
    std::printf("{\"operations\": [");
}

void JsonResults::add(const Result& result) {
    std::printf("%s\n {\"name\": \"%s\", \"group\": \"%s\", \"unit\": \"%s\", \"variants\": {",
                is_first_ ? "" : ",", result.name.c_str(), result.group.c_str(),
                result.unit.c_str());
    is_first_ = false;
    const char* separator = "";
    for (const Series& series : result.series) {
        std::printf("%s\n  \"%s\": {\"batch\": %d, \"rounds\": [", separator,
                    series.variant.c_str(), series.batch);
        const char* comma = "";
        for (const double value : series.values) {
            std::printf("%s%.2f", comma, value);
            comma = ", ";
        }
        std::printf("]}");
        separator = ",";
    }
    std::printf("}, \"missing\": {");
    separator = "";
    for (const auto& [variant, reason] : result.missing) {
        std::printf("%s\"%s\": \"%s\"", separator, variant.c_str(), escaped(reason).c_str());
        separator = ", ";
    }
    std::printf("}}");
}

bool JsonResults::end() {
    std::printf("\n],\n\"vm\": \"%s\"", escaped(vmName()).c_str());
    std::printf(",\n\"checks\": {\"held\": %d, \"failed\": %d}}\n", heldChecks(), failedChecks());
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace bench
