#include "records/shapes.h"

#include <records/catalogue.h>

#include <algorithm>
#include <climits>
#include <iterator>

namespace hostile {
namespace {

/// A field that holds one value or one text, where it is in the whole record.
struct Place {
    size_t offset;
    size_t size;
    catalogue::Kind kind;
};

struct Shape {
    int id;
    size_t size;
    std::vector<Place> places;
};

void addPlaces(const catalogue::Record& record, size_t begin, std::vector<Place>& places) {
    for (const catalogue::Field& field : record.fields) {
        for (size_t i = 0; i < field.count; ++i) {
            const size_t offset = begin + field.offset + i * field.size;
            if (field.record != nullptr) {
                addPlaces(*field.record, offset, places);
            } else {
                places.push_back({offset, field.size, field.kind});
            }
        }
    }
}

const std::vector<Shape>& shapes() {
    static const std::vector<Shape>& all = *[] {
        auto* const made = new std::vector<Shape>;
        for (const catalogue::Message& message : catalogue::events()) {
            Shape shape{message.id, message.record->size, {}};
            addPlaces(*message.record, 0, shape.places);
            made->push_back(std::move(shape));
        }
        return made;
    }();
    return all;
}

/// The shape of an event, or that of the first.
const Shape& shapeOf(int id) {
    for (const Shape& shape : shapes()) {
        if (shape.id == id) {
            return shape;
        }
    }
    return shapes().front();
}

/// An event's shape. A long record takes as long as many short ones, so it is chosen less often.
const Shape& anyShape(Random& random) {
    const Shape* shape = &shapes()[random.below(shapes().size())];
    while (shape->size > 4000 && !random.oneIn(8)) {
        shape = &shapes()[random.below(shapes().size())];
    }
    return *shape;
}

uint32_t boundary(Random& random, size_t width) {
    static const uint32_t values[] = {
        0,    1,     2,      6,      7,      8,       9,          10,         44,
        97,   98,    99,     193,    194,    195,     196,        0x7f,       0x80,
        0xff, 0x100, 0x7fff, 0x8000, 0xffff, 0x10000, 0x7fffffff, 0x80000000, 0xffffffff};
    switch (random.below(4)) {
    case 0:
        return static_cast<uint32_t>(random.next());
    case 1:
        return static_cast<uint32_t>(random.below(12));
    default: {
        // Of those that the width holds, one as likely as the other.
        size_t count = std::size(values);
        while (width < 4 && values[count - 1] >> (8 * width) != 0) {
            --count;
        }
        return values[random.below(count)];
    }
    }
}

void fillPlace(Random& random, const Place& place, std::vector<uint8_t>& bytes) {
    if (place.offset + place.size > bytes.size()) {
        return;
    }
    uint8_t* const field = bytes.data() + place.offset;
    switch (place.kind) {
    case catalogue::Kind::kText:
        fillText(random, field, place.size);
        return;
    case catalogue::Kind::kUtf16Text:
        fillUtf16(random, field, place.size);
        return;
    case catalogue::Kind::kBytes:
        for (size_t i = 0; i < place.size; ++i) {
            field[i] = static_cast<uint8_t>(random.next());
        }
        return;
    default: {
        uint32_t value = boundary(random, place.size);
        for (size_t i = 0; i < std::min<size_t>(place.size, 4); ++i, value >>= 8) {
            field[i] = static_cast<uint8_t>(value);
        }
    }
    }
}

void changeSize(Random& random, Input& input) {
    const auto right = static_cast<int>(shapeOf(input.id).size);
    static const int sizes[] = {0, 1, 2, 3, 4, 7, 8, 9, -1, INT_MIN, INT_MAX, 16384, 16385, 65536};
    switch (random.below(6)) {
    case 0:
        input.size = right - 1;
        break;
    case 1:
        input.size = right + 1;
        break;
    case 2:
        input.size = static_cast<int>(random.below(static_cast<size_t>(right)));
        break;
    case 3:
        input.size = right + static_cast<int>(random.below(64));
        break;
    case 4:
        input.size = sizes[random.below(std::size(sizes))];
        break;
    default:
        input.size = right;
        break;
    }
}

void changeId(Random& random, Input& input) {
    constexpr int kFirst = 0x10000042;
    constexpr int kLast = 0x1000009e;
    static const int ids[] = {kFirst - 1, kLast + 1, 0x10000075, 0x1000007e, 0x10000000, 0x10000041,
                              0x42,       0,         -1,         INT_MAX,    INT_MIN};
    switch (random.below(3)) {
    case 0:
        input.id = ids[random.below(std::size(ids))];
        break;
    case 1:
        input.id = static_cast<int>(static_cast<uint32_t>(random.next()));
        break;
    default:
        // The record of one event under the id of another.
        input.id = kFirst + static_cast<int>(random.below(kLast - kFirst + 1));
        break;
    }
}

void changeFields(Random& random, Input& input) {
    const Shape& shape = shapeOf(input.id);
    if (input.bytes.size() < shape.size) {
        input.bytes.resize(shape.size);
    }
    for (size_t left = 1 + random.below(4); left != 0; --left) {
        fillPlace(random, shape.places[random.below(shape.places.size())], input.bytes);
    }
}

} // namespace

Input shaped(Random& random) {
    const Shape& shape = anyShape(random);
    Input input;
    input.id = shape.id;
    input.size = static_cast<int>(shape.size);
    input.bytes.resize(shape.size);
    for (const Place& place : shape.places) {
        if (!random.oneIn(8)) {
            fillPlace(random, place, input.bytes);
        }
    }
    input.begins_at_page = random.oneIn(4);
    input.traced = random.oneIn(64);
    return input;
}

void change(Random& random, Input& input) {
    switch (random.below(16)) {
    case 0:
        changeSize(random, input);
        break;
    case 1:
        changeId(random, input);
        break;
    case 2:
        input.begins_at_page = !input.begins_at_page;
        break;
    case 3:
        // Traced records take several times as long.
        input.traced = !input.traced && random.oneIn(32);
        break;
    case 4:
        input.null = !input.null && random.oneIn(4);
        break;
    case 5:
        input.bytes.resize(random.below(input.bytes.size() + 1));
        break;
    case 6:
        input.size = static_cast<int>(shapeOf(input.id).size);
        break;
    default:
        changeFields(random, input);
        break;
    }
}

} // namespace hostile
