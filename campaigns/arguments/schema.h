// The natives and the classes of their arguments, as the Java side is promised: written for this
// campaign alone, not taken from the bridge's tables.
#pragma once

#include <string>
#include <vector>

namespace hostile {

enum class Kind {
    kInt,
    kEnum,
    kText,
    kBytes,
    kSurface,
    kObject,
};

struct ClassSpec;

struct FieldSpec {
    const char* name;
    Kind kind;
    /// A value that is accepted: of an int or an enumeration's number.
    int usual = 0;
    /// Of an enumeration: its class without "BG_TE_DTVSVLIB_", and its getter.
    const char* type = "";
    const char* getter = "";
    /// Of a text or bytes: the most bytes that are accepted, or that are sent.
    int limit = 0;
    const ClassSpec* of = nullptr; ///< of an object
};

struct ClassSpec {
    const char* name; ///< without "BG_TS_DTVSVLIB_"
    std::vector<FieldSpec> fields;

    std::string path() const {
        return std::string("tenrik/service/dtvserver/type/BG_TS_DTVSVLIB_") + name;
    }
    /// The place of a field; ends the process when there is none.
    size_t indexOf(const std::string& field) const;
};

struct NativeSpec {
    const char* name; ///< without "DtvSvLib_"
    /// The accepted values of its ints, and its objects, in the order of the parameters: the
    /// session first, but for Create.
    struct Parameter {
        int usual = 0;
        const ClassSpec* of = nullptr; ///< null: an int
    };
    std::vector<Parameter> parameters;
    std::string answer; ///< the class, without its package

    std::string descriptor() const;
};

/// All 65.
const std::vector<NativeSpec>& natives();

/// The type of a field as a descriptor.
std::string descriptorOf(const FieldSpec& field);

} // namespace hostile
