// One call with its arguments, as numbers and texts: before any Java object is made of it.
#pragma once

#include "arguments/schema.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace hostile {

/// What is given where a value is to be.
struct Value {
    enum class Form {
        kUsual, ///< an int, a text, bytes, a surface, an object; of an enumeration one of its class
        kNull,
        kForeign,        ///< a java.lang.String where another object is to be
        kImpostor,       ///< a class of the same name from another loader, with all that it needs
        kThrows,         ///< such an enumeration whose getter throws
        kNoGetter,       ///< such an enumeration without the getter
        kInstanceGetter, ///< such an enumeration whose getter is no static method
        kLacks,          ///< an object's class of the same name without one field
        kOtherType,      ///< the same, where the field has another type
        kStatic,         ///< the same, where the field is static
    };
    Form form = Form::kUsual;
    int number = 0;   ///< an int, an enumeration's number, which surface; 0: without one
    size_t field = 0; ///< of an object that lacks one, its place
    std::u16string text;
    std::vector<uint8_t> bytes;
    std::vector<Value> fields; ///< in the order of the class's; also of an object that is null

    bool isObject() const { return form != Form::kNull && form != Form::kForeign; }
};

/// The text in modified UTF-8.
std::string modifiedUtf8(const std::u16string& text);

/// The number of native surfaces that arguments may have: 1 to this.
constexpr int kSurfaces = 3;

struct Round {
    const NativeSpec* native = nullptr;
    std::vector<Value> arguments;
    int delay_bound = 0; ///< of a creation that comes before
    bool traced = false;
    int send_result = 0;
    std::vector<uint8_t> reply;    ///< of a synchronous command
    std::optional<int> reply_size; ///< none: the service writes none
};

/// Chooses among the values of each part of a call.
class Chooser {
public:
    virtual ~Chooser();
    /// 0 to `count` - 1; 0 is accepted. The first `in_pairs` come with each of another part as
    /// well.
    virtual size_t choose(size_t count, size_t in_pairs) = 0;
    /// Any number.
    virtual uint64_t any() = 0;
};

/// Each native's parts are the same in number, and in the order of the calls of `chooser`, in all
/// rounds.
Round makeRound(const NativeSpec& native, Chooser& chooser);

} // namespace hostile
