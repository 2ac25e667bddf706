// How the wire records are stated: packed little-endian structs whose size and offsets are checked
// when they are compiled.
#pragma once

#include <cstddef>
#include <cstdint>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "records lie in memory as on the wire");

/// States the whole size of a record, in bytes.
#define DTV_RECORD_SIZE(record, bytes)                                                             \
    static_assert(sizeof(record) == (bytes), #record " is " #bytes " bytes long")

/// States where a field of a record begins, in bytes from the record's start.
#define DTV_FIELD_AT(record, field, offset)                                                        \
    static_assert(offsetof(record, field) == (offset), #record "." #field " lies at " #offset)
