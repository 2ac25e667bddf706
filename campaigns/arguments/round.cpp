#include "arguments/round.h"

#include <algorithm>
#include <climits>
#include <iterator>

namespace hostile {
namespace {

using Form = Value::Form;

/// The edges of all limits, and of all widths. The first ones matter most.
const int kInts[] = {-1,   0,    5,    INT_MAX, INT_MIN, 255,    256,    65536,  3,
                     4,    9,    1,    2,       6,       7,      8,      10,     15,
                     16,   17,   18,   30,      61,      62,     63,     120,    127,
                     128,  998,  999,  1000,    32767,   32768,  65535,  70000,  -2,
                     -128, -255, -256, -257,    -32768,  -32769, -65535, -65536, 0x10000001};
const int kNumbers[] = {-1, 0, 2, 3, 4, 8, 9, 255, 256, INT_MAX, INT_MIN, 5, 7, 65536};

Value intValue(int usual, Chooser& chooser) {
    const size_t choice = chooser.choose(std::size(kInts) + 2, 12);
    Value value;
    if (choice == 0) {
        value.number = usual;
    } else if (choice <= std::size(kInts)) {
        value.number = kInts[choice - 1];
    } else {
        value.number = static_cast<int>(static_cast<uint32_t>(chooser.any()));
    }
    return value;
}

Value enumValue(int usual, Chooser& chooser) {
    static const Form kForms[] = {Form::kNull, Form::kThrows, Form::kNoGetter, Form::kForeign,
                                  Form::kInstanceGetter};
    constexpr size_t kCount = std::size(kNumbers);
    const size_t choice = chooser.choose(1 + std::size(kForms) + 2 * kCount + 1, 14);
    Value value;
    value.number = usual;
    if (choice == 0) {
        return value;
    }
    if (choice <= std::size(kForms)) {
        value.form = kForms[choice - 1];
        return value;
    }
    const size_t of_number = choice - 1 - std::size(kForms);
    if (of_number < 2 * kCount) {
        value.number = kNumbers[of_number % kCount];
        value.form = of_number < kCount ? Form::kUsual : Form::kImpostor;
    } else {
        value.number = static_cast<int>(static_cast<uint32_t>(chooser.any()));
        value.form = Form::kImpostor;
    }
    return value;
}

/// Units of one, two or three bytes each; a zero, surrogates in pairs and alone; all of them.
const std::u16string kAlphabets[] = {
    u"a",
    u"\u00e9",
    u"\u3042",
    std::u16string(1, u'\0'),
    u"\xD83D\xDE00",
    u"\xDC00\xD800",
    std::u16string(u"a\u00e9\u3042\xD83D\xDE00%s|\n\x01\xFFFF\x7F\x80", 14)};

/// A text that takes as many bytes, or nearly.
std::u16string textOf(const std::u16string& alphabet, int bytes) {
    std::u16string text;
    int length = 0;
    for (size_t i = 0; length < bytes; ++i) {
        const char16_t unit = alphabet[i % alphabet.size()];
        text += unit;
        length += static_cast<int>(modifiedUtf8(std::u16string(1, unit)).size());
    }
    return text;
}

Value textValue(int limit, Chooser& chooser) {
    const int lengths[] = {limit,     limit + 1, 0,         limit - 1, limit + 2,
                           limit + 3, 1,         2 * limit, 70000};
    constexpr size_t kLengths = 9;
    const size_t choice = chooser.choose(2 + kLengths * std::size(kAlphabets), 8);
    Value value;
    if (choice == 0) {
        value.text = u"News";
    } else if (choice == 1) {
        value.form = Form::kNull;
    } else {
        const size_t which = choice - 2;
        value.text = textOf(kAlphabets[which / kLengths], lengths[which % kLengths]);
    }
    return value;
}

Value bytesValue(int limit, Chooser& chooser) {
    const int lengths[] = {limit, limit + 1, 0, limit - 1, 1, 1000, 70000};
    const size_t choice = chooser.choose(2 + std::size(lengths), 6);
    Value value;
    if (choice == 1) {
        value.form = Form::kNull;
        return value;
    }
    const int length = choice == 0 ? limit - 2 : lengths[choice - 2];
    for (int i = 0; i < length; ++i) {
        value.bytes.push_back(static_cast<uint8_t>(i * 37 + 200));
    }
    return value;
}

/// Surfaces of their own, so that each plane's is known from the others.
Value surfaceValue(int usual, Chooser& chooser) {
    const size_t choice = chooser.choose(4, 4);
    Value value;
    value.number = usual;
    if (choice == 1) {
        value.form = Form::kNull;
    } else if (choice == 2) {
        value.number = 0;
    } else if (choice == 3) {
        value.number = 1;
    }
    return value;
}

Value objectValue(const ClassSpec& of, int surface, Chooser& chooser) {
    static const Form kSpoiled[] = {Form::kLacks, Form::kOtherType, Form::kStatic};
    const size_t count = of.fields.size();
    const size_t choice = chooser.choose(4 + count * std::size(kSpoiled), 4 + count);
    Value value;
    switch (choice) {
    case 0:
        break;
    case 1:
        value.form = Form::kNull;
        break;
    case 2:
        value.form = Form::kForeign;
        break;
    case 3:
        value.form = Form::kImpostor;
        break;
    default:
        value.form = kSpoiled[(choice - 4) / count];
        value.field = (choice - 4) % count;
        break;
    }
    for (const FieldSpec& field : of.fields) {
        switch (field.kind) {
        case Kind::kInt:
            value.fields.push_back(intValue(field.usual, chooser));
            break;
        case Kind::kEnum:
            value.fields.push_back(enumValue(field.usual, chooser));
            break;
        case Kind::kText:
            value.fields.push_back(textValue(field.limit, chooser));
            break;
        case Kind::kBytes:
            value.fields.push_back(bytesValue(field.limit, chooser));
            break;
        case Kind::kSurface:
            value.fields.push_back(surfaceValue(surface, chooser));
            break;
        case Kind::kObject:
            value.fields.push_back(objectValue(*field.of, surface, chooser));
            surface = surface % kSurfaces + 1;
            break;
        }
    }
    return value;
}

/// What the service answers to a synchronous command, and what the send returns.
void chooseAnswer(Round& round, Chooser& chooser) {
    static const int kResults[] = {0, 1, -1, INT_MIN};
    round.send_result = kResults[chooser.choose(std::size(kResults), 2)];
    const size_t choice = chooser.choose(10, 4);
    const std::vector<uint8_t> usual = {9, 0, 0, 0, 0x78, 0x56, 0x34, 0x92, 5, 0, 6, 0x80};
    switch (choice) {
    case 1: // nothing came
        round.reply_size = 0;
        break;
    case 2: // the same, with bytes at the one place that is tested, or at the other
    case 3:
        round.reply.resize(8);
        round.reply[choice == 2 ? 0 : 4] = 7;
        round.reply_size = 0;
        break;
    case 4: // no size was written
        round.reply = usual;
        break;
    case 5:
        break;
    case 6:
        round.reply.assign(4, 0xff);
        round.reply_size = -1;
        break;
    case 7:
        round.reply.assign(64, 0xff);
        round.reply_size = INT_MAX;
        break;
    default:
        round.reply = usual;
        round.reply_size = choice == 8 ? 8 : 12;
        if (choice == 9) {
            for (uint8_t& byte : round.reply) {
                byte = static_cast<uint8_t>(chooser.any());
            }
        }
        break;
    }
}

} // namespace

Chooser::~Chooser() = default;

std::string modifiedUtf8(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        if (unit != 0 && unit < 0x80) {
            bytes += static_cast<char>(unit);
        } else if (unit < 0x800) {
            bytes += static_cast<char>(0xc0 | unit >> 6);
            bytes += static_cast<char>(0x80 | (unit & 0x3f));
        } else {
            bytes += static_cast<char>(0xe0 | unit >> 12);
            bytes += static_cast<char>(0x80 | (unit >> 6 & 0x3f));
            bytes += static_cast<char>(0x80 | (unit & 0x3f));
        }
    }
    return bytes;
}

Round makeRound(const NativeSpec& native, Chooser& chooser) {
    Round round;
    round.native = &native;
    int surface = 1;
    for (const NativeSpec::Parameter& parameter : native.parameters) {
        if (parameter.of == nullptr) {
            round.arguments.push_back(intValue(parameter.usual, chooser));
        } else {
            round.arguments.push_back(objectValue(*parameter.of, surface, chooser));
            surface = surface % kSurfaces + 1;
        }
    }
    static const int kBounds[] = {999, 0, 5, -5};
    round.delay_bound = kBounds[chooser.choose(std::size(kBounds), 4)];
    round.traced = chooser.choose(16, 2) == 1;
    chooseAnswer(round, chooser);
    return round;
}

} // namespace hostile
