#include "desk/show/record_text.h"

#include "desk/show/characters.h"
#include "desk/show/quoted_text.h"

#include "sessions/known_bytes.h"
#include "sessions/message.h"

#include <cstdio>

namespace show {
namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;
using sessions::Bytes;

using Lines = std::vector<std::string>;
using sessions::Known;

constexpr size_t kNesting = 4;
constexpr size_t kNarrowest = 16; ///< columns for a value, however deep it is

std::string hex(uint8_t byte, const char* prefix = "") {
    char text[8];
    std::snprintf(text, sizeof text, "%s%02x", prefix, byte);
    return text;
}

std::vector<std::string> hexWords(Bytes bytes, const char* prefix = "") {
    std::vector<std::string> words;
    words.reserve(bytes.size);
    for (size_t i = 0; i < bytes.size; ++i) {
        words.push_back(hex(bytes.data[i], prefix));
    }
    return words;
}

constexpr char kUnknown[] = "unknown";

std::string numberText(Bytes bytes, Kind kind) {
    return kind == Kind::kSigned ? std::to_string(sessions::numberOf(bytes, kind))
                                 : std::to_string(bytes.number());
}

/// Writes the lines of one record, and of the records in it.
class Writer {
public:
    /// `start` is the first byte of the whole record.
    Writer(Lines& lines, const uint8_t* start, const std::vector<bool>& known)
        : lines_(lines), start_(start), known_(known) {}

    /// `record` has as many bytes of it as there are.
    void write(const Record& layout, Bytes record, size_t indent) {
        const Place place = placeFor(layout, indent);
        size_t end = 0;
        for (const Field& field : layout.fields) {
            writeReserved(record, end, field.offset, place);
            end = field.offset + field.size * field.count;
            const Bytes bytes = record.from(field.offset).first(end - field.offset);
            if (bytes.size > 0) {
                writeField(field, bytes, place);
            }
        }
        writeReserved(record, end, layout.size, place);
    }

    void writeSurplus(const Record& layout, Bytes surplus, size_t indent) {
        writeBytes("surplus", hexWords(surplus), placeFor(layout, indent));
    }

private:
    struct Place {
        size_t indent; ///< column of the names
        size_t value;  ///< column of the values
    };

    static Place placeFor(const Record& layout, size_t indent) {
        size_t longest = 0;
        for (const Field& field : layout.fields) {
            longest = std::max(longest, field.name.size());
        }
        return {indent, indent + longest + 2};
    }

    static size_t columnsFor(const Place& place) {
        return std::max(kColumns - std::min(kColumns, place.value), kNarrowest);
    }

    static Lines wrapped(const std::vector<std::string>& words, const Place& place) {
        return wrappedWords(words, columnsFor(place));
    }

    void writeValue(const std::string& name, const Lines& value, const Place& place) {
        std::string line = std::string(place.indent, ' ') + name;
        line.resize(place.value, ' ');
        for (const std::string& part : value) {
            lines_.push_back(line + part);
            line.assign(place.value, ' ');
        }
    }

    /// A name that is no field's: the column of the values makes room for it.
    void writeBytes(const std::string& name, const std::vector<std::string>& words, Place place) {
        place.value = std::max(place.value, place.indent + name.size() + 2);
        writeValue(name, wrapped(words, place), place);
    }

    void writeReserved(Bytes record, size_t begin, size_t end, const Place& place) {
        if (end <= begin) {
            return;
        }
        const Bytes bytes = record.from(begin).first(end - begin);
        if (!bytes.areZero()) {
            writeBytes("reserved at " + std::to_string(begin), hexWords(bytes, "0x"), place);
        }
    }

    Known known(Bytes bytes) const {
        return known_.empty() ? Known::kAll
                              : sessions::knownOf(known_, static_cast<size_t>(bytes.data - start_),
                                                  bytes.size);
    }

    void writeText(const Field& field, Bytes bytes, size_t unit, const Place& place) {
        const Bytes text = untilZero(bytes, unit);
        if (known(bytes.first(text.size + unit)) != Known::kAll) {
            writeValue(field.name, {kUnknown}, place);
            return;
        }
        writeValue(field.name,
                   quotedLines(unit == 1 ? utf8Glyphs(text) : utf16Glyphs(text), columnsFor(place)),
                   place);
    }

    std::vector<std::string> byteWords(Bytes bytes) const {
        if (known(bytes) == Known::kNone) {
            return {kUnknown};
        }
        std::vector<std::string> words = hexWords(bytes);
        for (size_t i = 0; i < bytes.size; ++i) {
            if (known({bytes.data + i, 1}) != Known::kAll) {
                words[i] = "??";
            }
        }
        return words;
    }

    void writeField(const Field& field, Bytes bytes, const Place& place) {
        switch (field.kind) {
        case Kind::kUnsigned:
        case Kind::kSigned:
            writeValue(field.name, wrapped(numberWords(field, bytes), place), place);
            break;
        case Kind::kBytes:
            writeValue(field.name, wrapped(byteWords(bytes), place), place);
            break;
        case Kind::kText:
            writeText(field, bytes, 1, place);
            break;
        case Kind::kUtf16Text:
            writeText(field, bytes, 2, place);
            break;
        case Kind::kRecord:
            writeRecords(field, bytes, place);
            break;
        }
    }

    /// The numbers that are whole; what there is of the next one as bytes.
    std::vector<std::string> numberWords(const Field& field, Bytes bytes) const {
        std::vector<std::string> words;
        if (known(bytes) == Known::kNone) {
            return {kUnknown};
        }
        while (bytes.size >= field.size && field.size > 0) {
            const Bytes number = bytes.first(field.size);
            words.push_back(known(number) == Known::kAll ? numberText(number, field.kind)
                                                         : kUnknown);
            bytes = bytes.from(field.size);
            if (bytes.size > 0) {
                words.back() += ',';
            }
        }
        if (bytes.size > 0) {
            words.emplace_back("only");
            for (std::string& word : hexWords(bytes, "0x")) {
                words.push_back(std::move(word));
            }
        }
        return words;
    }

    void writeRecords(const Field& field, Bytes bytes, const Place& place) {
        const std::string indent(place.indent, ' ');
        size_t zero = 0;
        if (known(bytes) == Known::kNone) {
            writeValue(field.name, {kUnknown}, place);
            return;
        }
        for (size_t i = 0; i < field.count && bytes.size > 0; ++i) {
            const Bytes element = bytes.first(field.size);
            bytes = bytes.from(field.size);
            if (field.count > 1 && known(element) == Known::kAll && element.size == field.size &&
                element.areZero()) {
                ++zero;
                continue;
            }
            const std::string index = field.count > 1 ? '[' + std::to_string(i) + ']' : "";
            lines_.push_back(indent + field.name + index);
            write(*field.record, element, place.indent + kNesting);
        }
        if (zero > 0) {
            writeValue(field.name,
                       {std::to_string(zero) + " of " + std::to_string(field.count) + " elements " +
                        (zero == 1 ? "is" : "are") + " all zero"},
                       place);
        }
    }

    Lines& lines_;
    const uint8_t* const start_;
    const std::vector<bool>& known_;
};

} // namespace

Lines recordLines(const Record& layout, Bytes record, size_t indent,
                  const std::vector<bool>& known) {
    Lines lines;
    Writer writer(lines, record.data, known);
    writer.write(layout, record.first(layout.size), indent);
    if (record.size < layout.size) {
        lines.push_back(std::string(indent, ' ') + "the record ends here, " +
                        std::to_string(record.size) + " of " + std::to_string(layout.size) +
                        " bytes");
    } else if (record.size > layout.size) {
        writer.writeSurplus(layout, record.from(layout.size), indent);
    }
    return lines;
}

Lines dumpLines(Bytes bytes, size_t indent) {
    Lines lines;
    for (size_t offset = 0; offset < bytes.size; offset += 16) {
        const Bytes row = bytes.from(offset).first(16);
        char head[24];
        std::snprintf(head, sizeof head, "%04zx ", offset);
        std::string line = std::string(indent, ' ') + head;
        std::string ascii;
        for (size_t i = 0; i < 16; ++i) {
            line += i < row.size ? ' ' + hex(row.data[i]) : "   ";
            if (i < row.size) {
                const uint8_t byte = row.data[i];
                ascii += byte >= 0x20 && byte < 0x7f ? static_cast<char>(byte) : '.';
            }
        }
        lines.push_back(line + "  " + ascii);
    }
    return lines;
}

} // namespace show
