#include "arguments/class_file.h"

namespace hostile {
namespace {

constexpr uint16_t kPublic = 0x0001;
constexpr uint16_t kStatic = 0x0008;
constexpr uint16_t kSuper = 0x0020;

class Bytes {
public:
    void u1(unsigned value) { bytes.push_back(static_cast<uint8_t>(value)); }
    void u2(unsigned value) {
        u1(value >> 8);
        u1(value);
    }
    void u4(unsigned value) {
        u2(value >> 16);
        u2(value);
    }
    void add(const std::vector<uint8_t>& more) {
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    std::vector<uint8_t> bytes;
};

/// The constants of a class; the numbers begin with 1.
class Constants {
public:
    uint16_t text(const std::string& text) {
        entries.u1(1);
        entries.u2(static_cast<unsigned>(text.size()));
        for (const char letter : text) {
            entries.u1(static_cast<unsigned char>(letter));
        }
        return next++;
    }
    uint16_t classOf(const std::string& name) { return pair(7, text(name)); }
    uint16_t fieldOf(uint16_t of, const std::string& name, const std::string& descriptor) {
        const uint16_t name_number = text(name);
        const uint16_t both = pair(12, name_number, text(descriptor));
        return pair(9, of, both);
    }

    Bytes entries;
    uint16_t next = 1;

private:
    uint16_t pair(unsigned tag, uint16_t first) {
        entries.u1(tag);
        entries.u2(first);
        return next++;
    }
    uint16_t pair(unsigned tag, uint16_t first, uint16_t second) {
        entries.u1(tag);
        entries.u2(first);
        entries.u2(second);
        return next++;
    }
};

/// A method's code with its attribute's head.
std::vector<uint8_t> codeOf(Constants& constants, Getter getter, uint16_t value) {
    Bytes code;
    if (getter == Getter::kThrows) {
        code.u1(0x01); // aconst_null
        code.u1(0xbf); // athrow
    } else {
        code.u1(getter == Getter::kInstance ? 0x2b : 0x2a); // aload_1, aload_0: the argument
        code.u1(0xb4);                                      // getfield
        code.u2(value);
        code.u1(0xac); // ireturn
    }
    Bytes attribute;
    attribute.u2(constants.text("Code"));
    attribute.u4(static_cast<unsigned>(12 + code.bytes.size()));
    attribute.u2(1); // stack
    attribute.u2(2); // locals
    attribute.u4(static_cast<unsigned>(code.bytes.size()));
    attribute.add(code.bytes);
    attribute.u2(0); // exceptions
    attribute.u2(0); // attributes
    return attribute.bytes;
}

} // namespace

void ClassFile::addField(const std::string& name, const std::string& descriptor, bool is_static) {
    fields_.push_back({name, descriptor, is_static});
}

void ClassFile::setGetter(Getter getter, const std::string& name, const std::string& descriptor) {
    getter_ = getter;
    getter_name_ = name;
    getter_descriptor_ = descriptor;
}

std::vector<uint8_t> ClassFile::bytes() const {
    Constants constants;
    const uint16_t own = constants.classOf(name_);
    const uint16_t super = constants.classOf("java/lang/Object");
    Bytes members;
    members.u2(0); // interfaces
    const bool answers = getter_ != Getter::kNone;
    members.u2(static_cast<unsigned>(fields_.size() + (answers ? 1 : 0)));
    for (const Field& field : fields_) {
        members.u2(field.is_static ? kPublic | kStatic : kPublic);
        members.u2(constants.text(field.name));
        members.u2(constants.text(field.descriptor));
        members.u2(0);
    }
    if (answers) {
        members.u2(kPublic);
        members.u2(constants.text("value"));
        members.u2(constants.text("I"));
        members.u2(0);
    }
    members.u2(answers ? 1 : 0);
    if (answers) {
        const uint16_t value = constants.fieldOf(own, "value", "I");
        members.u2(getter_ == Getter::kInstance ? kPublic : kPublic | kStatic);
        members.u2(constants.text(getter_name_));
        members.u2(constants.text(getter_descriptor_));
        members.u2(1);
        members.add(codeOf(constants, getter_, value));
    }
    members.u2(0); // attributes

    Bytes file;
    file.u4(0xcafebabe);
    file.u2(0);
    file.u2(49); // a version that has no maps of the stack
    file.u2(constants.next);
    file.add(constants.entries.bytes);
    file.u2(kPublic | kSuper);
    file.u2(own);
    file.u2(super);
    file.add(members.bytes);
    return file.bytes;
}

} // namespace hostile
