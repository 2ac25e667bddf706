-- The dissector for Wireshark, in parts that are put together: fields.lua, values.lua, pairing.lua,
-- record.lua, message.lua. The tables `enumerations`, `records` and `messages` come before them.
-- docs/capture.md describes the bytes of a packet, the names of the fields and which messages belong
-- together.

local VERSION = 1
local HEADER = 36
local COMMAND, ANSWER, EVENT, REFUSED = 1, 2, 3, 4
local KINDS = {[COMMAND] = "command", [ANSWER] = "answer", [EVENT] = "event", [REFUSED] = "refused"}

local dtv = Proto("dtv", "DTV service")

local names = {}
for id, message in pairs(messages) do
    names[id] = message.name
end

-- The fields that all messages have.
local own = {
    version = ProtoField.uint8("dtv.version", "Version"),
    kind = ProtoField.uint8("dtv.kind", "Kind", base.DEC, KINDS),
    surfaces = ProtoField.uint8("dtv.surfaces", "Surfaces"),
    thread_id = ProtoField.uint32("dtv.thread_id", "Thread number"),
    id = ProtoField.uint32("dtv.id", "Message", base.HEX, names),
    value = ProtoField.int32("dtv.value", "Value"),
    size = ProtoField.int32("dtv.size", "Size"),
    thread = ProtoField.string("dtv.thread", "Thread"),
    name = ProtoField.string("dtv.name", "Name"),
    record = ProtoField.bytes("dtv.record", "Record"),
    header_reserved = ProtoField.uint8("dtv.header_reserved", "Reserved"),
    reserved = ProtoField.bytes("dtv.reserved", "Reserved"),
    unknown_field = ProtoField.string("dtv.unknown_field", "Not known"),
    cut = ProtoField.bytes("dtv.cut", "Part of a field"),
    surplus = ProtoField.bytes("dtv.surplus", "Surplus"),
    left_out = ProtoField.uint32("dtv.left_out", "Bytes that the capture lacks"),
    session = ProtoField.uint16("dtv.session", "Session"),
    result = ProtoField.int32("dtv.result", "Result"),
    partner = ProtoField.framenum("dtv.partner", "Belongs to", base.NONE, frametype.REQUEST),
    answered_in = ProtoField.framenum("dtv.answered_in", "Answered in", base.NONE,
        frametype.RESPONSE),
    latency = ProtoField.relative_time("dtv.latency", "Time since then"),
    ambiguous = ProtoField.bool("dtv.ambiguous", "May belong to another command"),
}

local experts = {
    version = ProtoExpert.new("dtv.other_version", "Another version", expert.group.UNDECODED,
        expert.severity.WARN),
    short = ProtoExpert.new("dtv.short", "Too short for a message", expert.group.MALFORMED,
        expert.severity.ERROR),
    unknown = ProtoExpert.new("dtv.unknown", "Unknown message or kind", expert.group.UNDECODED,
        expert.severity.NOTE),
    ends_at = ProtoExpert.new("dtv.ends_at", "The record ends here", expert.group.MALFORMED,
        expert.severity.WARN),
    left_out = ProtoExpert.new("dtv.lacks", "The capture lacks bytes", expert.group.UNDECODED,
        expert.severity.NOTE),
    surplus = ProtoExpert.new("dtv.has_surplus", "Bytes after the record",
        expert.group.MALFORMED, expert.severity.WARN),
    reserved = ProtoExpert.new("dtv.has_reserved", "Reserved bytes that are not zero",
        expert.group.PROTOCOL, expert.severity.NOTE),
    refused = ProtoExpert.new("dtv.refused", "The event was refused",
        expert.group.RESPONSE_CODE, expert.severity.WARN),
    not_taken = ProtoExpert.new("dtv.not_taken", "The send returned another value than 0",
        expert.group.RESPONSE_CODE, expert.severity.WARN),
    result = ProtoExpert.new("dtv.not_done", "The result is not 0", expert.group.RESPONSE_CODE,
        expert.severity.NOTE),
    unanswered = ProtoExpert.new("dtv.unanswered", "No answer up to the end of the capture",
        expert.group.SEQUENCE, expert.severity.WARN),
    ambiguous = ProtoExpert.new("dtv.is_ambiguous", "Another command of this kind was open",
        expert.group.SEQUENCE, expert.severity.NOTE),
}

-- The fields of the records: dtv.SelectChannel.service_no, dtv.Release_Sync.answer.return_value.

local all_fields = {}
for _, field in pairs(own) do
    all_fields[#all_fields + 1] = field
end

local NUMBERS = {
    unsigned = {ProtoField.uint8, ProtoField.uint16, ProtoField.uint24, ProtoField.uint32},
    signed = {ProtoField.int8, ProtoField.int16, ProtoField.int24, ProtoField.int32},
}

-- `enumeration` is the name of the one that the field's numbers are of, or nil.
local function make_field(field, name, enumeration)
    if field.kind == "record" then
        return ProtoField.none(name, field.name)
    elseif field.kind == "bytes" then
        return ProtoField.bytes(name, field.name)
    elseif field.kind == "text" or field.kind == "utf16" then
        return ProtoField.string(name, field.name)
    end
    return NUMBERS[field.kind][field.size](name, field.name, base.DEC, enumerations[enumeration])
end

-- The layout of a record under a name: its fields with a ProtoField each. `value_enumeration` is the
-- name of the enumeration of the field `value`, or nil.
local function make_layout(record, name, value_enumeration)
    local layout = {name = record.name, size = record.size, fields = {}, by_name = {}}
    for i, field in ipairs(record.fields) do
        local path = name .. "." .. field.name
        local made = {name = field.name, offset = field.offset, size = field.size,
            count = field.count, kind = field.kind, proto = make_field(field, path,
                field.enumeration or field.name == "value" and value_enumeration)}
        if field.kind == "record" then
            made.layout = make_layout(records[field.record], path)
        end
        all_fields[#all_fields + 1] = made.proto
        layout.fields[i] = made
        layout.by_name[field.name] = made
    end
    return layout
end

-- Where a record has reserved bytes: adds their beginnings and ends to a list.
local function find_reserved(layout, start, spans)
    local finish = 0
    local function add(from, to)
        if from < to then
            spans[#spans + 1] = {from = start + from, to = start + to}
        end
    end
    for _, field in ipairs(layout.fields) do
        add(finish, field.offset)
        finish = field.offset + field.size * field.count
        for i = 0, field.layout and field.count - 1 or -1 do
            find_reserved(field.layout, start + field.offset + i * field.size, spans)
        end
    end
    add(finish, layout.size)
    return spans
end

local function make_whole_layout(record, name, value_enumeration)
    local layout = make_layout(record, name, value_enumeration)
    layout.reserved = find_reserved(layout, 0, {})
    return layout
end

-- The events that commands wait for, and of these the ones of commands without a handle.
local reply_events, any_handle = {}, {}
for _, message in pairs(messages) do
    local name = "dtv." .. message.name
    message.layout = make_whole_layout(records[message.record], name, message.enumeration)
    message.has_handle = message.layout.by_name.handle ~= nil
    if message.answer then
        message.answer_layout = make_whole_layout(records[message.answer], name .. ".answer")
    end
    if message.reply_event then
        reply_events[message.reply_event] = true
        any_handle[message.reply_event] = not message.has_handle or nil
    end
end

dtv.fields = all_fields
local all_experts = {}
for _, one in pairs(experts) do
    all_experts[#all_experts + 1] = one
end
dtv.experts = all_experts
