// How a call is read: field by field, until something is refused or throws.
#pragma once

#include "arguments/model.h"
#include "arguments/round.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace hostile {

/// The message of a native: its number, and how long its record is.
struct MessageOf {
    int id;
    size_t size;
};

/// A call as it is read: what is refused or throws first decides.
class Reading {
public:
    Reading(const Round& round, int delay_bound) : round_(round), delay_bound_(delay_bound) {}

    /// The record of the message, with the session when the native has one.
    void begin(MessageOf message, bool session = true) {
        expected_.message = message.id;
        expected_.record.assign(message.size, 0);
        if (session) {
            put(0, 2, argument(0).number);
        }
    }

    const Value& argument(size_t index) const { return round_.arguments[index]; }
    int delayBound() const { return delay_bound_; }
    bool stopped() const { return refused_ || thrown_; }
    void refuseIf(bool wrong) { refused_ = refused_ || (!thrown_ && wrong); }

    void put(size_t at, size_t width, int number) {
        auto value = static_cast<uint32_t>(number);
        for (size_t i = 0; i < width && !stopped(); ++i, value >>= 8) {
            expected_.record.at(at + i) = static_cast<uint8_t>(value);
        }
    }

    /// An int argument that is at most `highest`.
    void number(size_t index, size_t at, size_t width, int highest = INT_MAX) {
        refuseIf(argument(index).number > highest);
        put(at, width, argument(index).number);
    }

    // The fields of an object. A null object, and one that lacks the field, are refused.
    struct Object {
        const ClassSpec& of;
        const Value& value;
    };
    Object object(size_t index) {
        return open({*round_.native->parameters[index].of, argument(index)});
    }
    Object inner(const Object& outer, const char* field) {
        const size_t place = outer.of.indexOf(field);
        has(outer, place);
        return open({*outer.of.fields[place].of, outer.value.fields[place]});
    }
    int readInt(const Object& from, const char* field) {
        const size_t place = from.of.indexOf(field);
        has(from, place);
        return from.value.fields[place].number;
    }
    void putInt(const Object& from, const char* field, size_t at, size_t width) {
        put(at, width, readInt(from, field));
    }
    /// Whether the constant can be read: without it nothing is refused here.
    bool canRead(const Object& from, const char* field) {
        const size_t place = from.of.indexOf(field);
        const Value& value = from.value.fields[place];
        if (!stopped() && lacks(from, place)) {
            return false;
        }
        switch (value.form) {
        case Value::Form::kUsual:
        case Value::Form::kImpostor:
            return true;
        case Value::Form::kThrows:
            thrown_ = thrown_ || !refused_;
            return true;
        default:
            return false;
        }
    }
    void putEnum(const Object& from, const char* field, size_t at, int highest = INT_MAX) {
        refuseIf(!canRead(from, field));
        const int number = from.value.fields[from.of.indexOf(field)].number;
        refuseIf(number > highest);
        put(at, 1, number);
    }
    std::string readText(const Object& from, const char* field) {
        const size_t place = from.of.indexOf(field);
        has(from, place);
        const Value& value = from.value.fields[place];
        refuseIf(value.form == Value::Form::kNull);
        return modifiedUtf8(value.text);
    }
    void putText(const Object& from, const char* field, size_t at, size_t size, size_t highest) {
        const std::string text = readText(from, field);
        refuseIf(text.size() > highest);
        for (size_t i = 0; i < size && i < text.size() && !stopped(); ++i) {
            expected_.record.at(at + i) = static_cast<uint8_t>(text[i]);
        }
    }
    void putBytes(const Object& from, const char* field, size_t at, size_t highest) {
        const size_t place = from.of.indexOf(field);
        has(from, place);
        const Value& value = from.value.fields[place];
        refuseIf(value.form == Value::Form::kNull || value.bytes.size() > highest);
        for (size_t i = 0; i < value.bytes.size() && !stopped(); ++i) {
            expected_.record.at(at + i) = value.bytes[i];
        }
    }
    void requireField(const Object& from, const char* field) { has(from, from.of.indexOf(field)); }

    void takeSurface(const Object& from) {
        expected_.has_surfaces = true;
        const size_t place = from.of.indexOf("surface_handle");
        has(from, place);
        const Value& value = from.value.fields[place];
        refuseIf(value.form == Value::Form::kNull);
        if (!stopped()) {
            expected_.surfaces.push_back(value.number);
        }
    }

    bool refused() const { return refused_; }
    bool thrown() const { return thrown_; }
    Expected& expected() { return expected_; }

private:
    Object open(Object object) {
        refuseIf(!object.value.isObject());
        return object;
    }
    static bool lacks(const Object& from, size_t place) {
        const Value::Form form = from.value.form;
        return (form == Value::Form::kLacks || form == Value::Form::kOtherType ||
                form == Value::Form::kStatic) &&
               from.value.field == place;
    }
    void has(const Object& from, size_t place) { refuseIf(lacks(from, place)); }

    const Round& round_;
    const int delay_bound_;
    Expected expected_;
    bool refused_ = false;
    bool thrown_ = false;
};

/// Reads the call of a native in the order that is promised of it. False when nothing is known of
/// it.
bool readCommand(const std::string& native, Reading& call);

} // namespace hostile
