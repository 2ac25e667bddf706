// Reads a JSON text that a person wrote, and reports the first mistake in it.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// A text in quotation marks for an error message: shortened, on one line.
std::string quoted(std::string_view text);

/// The bytes of a file; empty when it cannot be read or has more than 1048576 of them, and `reason`
/// says so.
std::optional<std::string> readFile(const std::string& path, std::string& reason);

/// Strict JSON: no comments, no member twice. Its functions take values out of the one that parse()
/// read.
class JsonReader {
public:
    /// The path is for the errors.
    JsonReader(std::string path, std::string text);

    /// Parses the text, which has to be an object as a whole. False on failure.
    bool parse(Json::Value& root);

    /// The mistake that comes first in the text, as "PATH:LINE: what is wrong"; empty without any.
    std::string error() const;

    /// Something is wrong with a value.
    void fail(const Json::Value& value, const std::string& reason);
    /// Something is wrong with an object as a whole. A mistake in one of its members comes first.
    void failWhole(const Json::Value& object, const std::string& reason);

    /// Whether the value is an object of these members and no other.
    bool object(const Json::Value& value, std::initializer_list<std::string_view> members);

    // Members of an object. A member of the wrong type or value is a mistake.

    /// Gives each element of a list to `take`; does nothing when there is no list.
    template <class Take>
    void each(const Json::Value& owner, const char* name, Take take) {
        if (isList(owner, name)) {
            for (const Json::Value& value : owner[name]) {
                take(value);
            }
        }
    }
    /// A whole number within limits; empty when there is none.
    std::optional<int64_t> number(const Json::Value& owner, const char* name, int64_t lowest,
                                  int64_t highest);
    /// True or false, and `otherwise` when there is neither.
    bool flag(const Json::Value& owner, const char* name, bool otherwise);

private:
    bool isList(const Json::Value& owner, const char* name);
    bool refuse(size_t offset, const std::string& reason);
    void note(size_t order, size_t offset, const std::string& reason);

    const std::string path_;
    const std::string text_;
    size_t order_; ///< of the mistake noted: bytes from the start
    size_t line_ = 0;
    std::string reason_;
};

} // namespace simulator
