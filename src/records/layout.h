// How the wire records are stated: packed little-endian structs whose size and offsets are checked
// when they are compiled.
#pragma once

#include <cstddef>
#include <cstdint>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "records are in memory as on the wire");

/// What else is made of each record and of each of its fields. A source that wants to know the
/// layout when it runs defines both, each ending in a semicolon, before it includes any record.
#ifndef DTV_DESCRIBE_RECORD
#define DTV_DESCRIBE_RECORD(record)
#define DTV_DESCRIBE_FIELD(record, field)
#endif

/// States the whole size of a record, in bytes. Its fields follow, in order.
#define DTV_RECORD_SIZE(record, bytes)                                                             \
    DTV_DESCRIBE_RECORD(record)                                                                    \
    static_assert(sizeof(record) == (bytes), #record " is " #bytes " bytes long")

/// States where a field of a record begins, in bytes from the record's start.
#define DTV_FIELD_AT(record, field, offset)                                                        \
    DTV_DESCRIBE_FIELD(record, field)                                                              \
    static_assert(offsetof(record, field) == (offset), #record "." #field " is at " #offset)
