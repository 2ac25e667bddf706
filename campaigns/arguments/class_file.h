// Class files of classes that have the names of the Java side's, and not all that those have.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hostile {

/// What a class's one method does.
enum class Getter {
    kNone,     ///< there is none
    kAnswers,  ///< static: answers its argument's field "value"
    kThrows,   ///< static: throws a NullPointerException
    kInstance, ///< the same as kAnswers, but an instance method
};

class ClassFile {
public:
    /// With slashes.
    explicit ClassFile(std::string name) : name_(std::move(name)) {}

    void addField(const std::string& name, const std::string& descriptor, bool is_static);
    /// A method of one argument that answers an int.
    void setGetter(Getter getter, const std::string& name, const std::string& descriptor);

    const std::string& name() const { return name_; }
    std::vector<uint8_t> bytes() const;

private:
    struct Field {
        std::string name;
        std::string descriptor;
        bool is_static;
    };
    std::string name_;
    std::vector<Field> fields_;
    Getter getter_ = Getter::kNone;
    std::string getter_name_;
    std::string getter_descriptor_;
};

} // namespace hostile
