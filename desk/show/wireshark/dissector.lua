-- The dissector. The tables `enumerations`, `records` and `messages` come before this; docs/capture.md describes the
-- bytes of a packet, the names of the fields and which messages belong together.

local VERSION = 1
local HEADER = 36
local COMMAND, ANSWER, EVENT, REFUSED = 1, 2, 3, 4
local KINDS = {[COMMAND] = "command", [ANSWER] = "answer", [EVENT] = "event", [REFUSED] = "refused"}
local NO_HANDLE = 65536
local SIGN_BITS = {0x80, 0x8000, 0x800000, 0x80000000}
local REPLACEMENT = "\239\191\189"

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

-- The reply events of commands without a handle.
local any_handle = {}
for _, message in pairs(messages) do
    local name = "dtv." .. message.name
    message.layout = make_whole_layout(records[message.record], name, message.enumeration)
    message.has_handle = message.layout.by_name.handle ~= nil
    if message.answer then
        message.answer_layout = make_whole_layout(records[message.answer], name .. ".answer")
    end
    if message.reply_event and not message.has_handle then
        any_handle[message.reply_event] = true
    end
end

dtv.fields = all_fields
local all_experts = {}
for _, one in pairs(experts) do
    all_experts[#all_experts + 1] = one
end
dtv.experts = all_experts

-- Texts. What is none becomes U+FFFD.

local function until_zero(bytes)
    local zero = bytes:find("\0", 1, true)
    return zero and bytes:sub(1, zero - 1) or bytes
end

-- The length of the character at a place of an UTF-8 text, or nil when there is none.
local function character_length(bytes, at)
    local first, second = bytes:byte(at, at + 1)
    if first < 0x80 then
        return 1
    end
    local length, lowest, highest = nil, 0x80, 0xbf
    if first >= 0xc2 and first < 0xe0 then
        length = 2
    elseif first >= 0xe0 and first < 0xf0 then
        length = 3
        -- No longer forms than needed, and no halves of UTF-16 characters.
        lowest = first == 0xe0 and 0xa0 or lowest
        highest = first == 0xed and 0x9f or highest
    elseif first >= 0xf0 and first < 0xf5 then
        length = 4
        lowest = first == 0xf0 and 0x90 or lowest
        highest = first == 0xf4 and 0x8f or highest
    end
    if not length or at + length - 1 > #bytes or second < lowest or second > highest then
        return nil
    end
    for i = at + 2, at + length - 1 do
        local byte = bytes:byte(i)
        if byte < 0x80 or byte > 0xbf then
            return nil
        end
    end
    return length
end

local function utf8_text(bytes)
    if not bytes:find("[\128-\255]") then
        return bytes
    end
    local parts, at = {}, 1
    while at <= #bytes do
        local length = character_length(bytes, at)
        parts[#parts + 1] = length and bytes:sub(at, at + length - 1) or REPLACEMENT
        at = at + (length or 1)
    end
    return table.concat(parts)
end

local function utf8_character(point)
    local floor = math.floor
    if point < 0x80 then
        return string.char(point)
    elseif point < 0x800 then
        return string.char(0xc0 + floor(point / 64), 0x80 + point % 64)
    elseif point < 0x10000 then
        return string.char(0xe0 + floor(point / 4096), 0x80 + floor(point / 64) % 64,
            0x80 + point % 64)
    end
    return string.char(0xf0 + floor(point / 262144), 0x80 + floor(point / 4096) % 64,
        0x80 + floor(point / 64) % 64, 0x80 + point % 64)
end

-- A text in UTF-16LE up to its first zero unit.
local function utf16_text(bytes)
    local parts, at = {}, 1
    while at < #bytes do
        local low, high = bytes:byte(at, at + 1)
        local unit = low + 256 * high
        at = at + 2
        if unit == 0 then
            return table.concat(parts)
        elseif unit < 0xd800 or unit > 0xdfff then
            parts[#parts + 1] = utf8_character(unit)
        else
            local text = REPLACEMENT
            if unit < 0xdc00 and at < #bytes then
                low, high = bytes:byte(at, at + 1)
                local other = low + 256 * high
                if other >= 0xdc00 and other < 0xe000 then
                    text = utf8_character(0x10000 + (unit - 0xd800) * 1024 + other - 0xdc00)
                    at = at + 2
                end
            end
            parts[#parts + 1] = text
        end
    end
    if at == #bytes then
        parts[#parts + 1] = REPLACEMENT
    end
    return table.concat(parts)
end

-- A little-endian number in a string of bytes, from an offset on; nil when the string ends before it.
local function number_at(bytes, offset, size, signed)
    local first, second, third, fourth = bytes:byte(offset + 1, offset + size)
    local number
    if size == 1 then
        number = first
    elseif size == 2 then
        number = second and first + 256 * second
    elseif size == 3 then
        number = third and first + 256 * second + 65536 * third
    else
        number = fourth and first + 256 * second + 65536 * third + 16777216 * fourth
    end
    if number and signed and number >= SIGN_BITS[size] then
        number = number - 2 * SIGN_BITS[size]
    end
    return number
end

-- A number of the record by the name of its field, or nil. `bytes` are those of the packet.
local function number_in(layout, bytes, name)
    local field = layout.by_name[name]
    return field and number_at(bytes, HEADER + field.offset, field.size, field.kind == "signed")
end

-- Which messages belong together: see docs/capture.md. Filled in the first pass, message by message.

local links     -- by number: what is known of the message
local open      -- by number: whether the command waits
local threads   -- by thread number: its last command and event
local queues    -- commands that wait for an event, by event and handle

local function forget_all()
    links, open, threads, queues = {}, {}, {}, {}
end
forget_all()
dtv.init = forget_all

local function key_of(event, handle)
    return event * 65537 + (handle or NO_HANDLE)
end

-- Nanoseconds as Wireshark has them in a time.
local function time_of(nanoseconds)
    local secs = math.floor(math.abs(nanoseconds) / 1000000000)
    local nsecs = math.abs(nanoseconds) - secs * 1000000000
    if nanoseconds < 0 then
        secs, nsecs = -secs, -nsecs
    end
    return NSTime.new(secs, nsecs)
end

local function tie(link, now, partner)
    link.partner = partner.number
    link.latency = time_of(now.time - partner.time)
    local other = links[partner.number]
    other.answers = other.answers or {}
    other.answers[#other.answers + 1] = now.number
end

local function add_command(message, known, handle, now)
    local command = {number = now.number, id = message.id, time = now.time, session = handle}
    if known and known.answer then
        open[now.number] = true
    elseif known and known.reply_event then
        open[now.number] = true
        command.key = key_of(known.reply_event, handle)
        local queue = queues[command.key]
        if not queue then
            queue = {first = 1, last = 0}
            queues[command.key] = queue
        end
        local before = queue[queue.last]
        if before and (handle or not known.has_handle) then
            command.before_was_ambiguous = before.ambiguous
            before.ambiguous = true
            command.ambiguous = true
        end
        queue.last = queue.last + 1
        queue[queue.last] = command
    end
    message.thread.command = command
end

-- A command that was not taken waits for no event.
local function forget(command)
    local queue = command.key and queues[command.key]
    if not queue then
        return
    end
    for i = queue.last, queue.first, -1 do
        if queue[i] == command then
            local before = queue[i - 1]
            if i == queue.last and before then
                before.ambiguous = command.before_was_ambiguous
            end
            for j = i, queue.last do
                queue[j] = queue[j + 1]
            end
            queue.last = queue.last - 1
            open[command.number] = nil
            break
        end
    end
    if queue.last < queue.first then
        queues[command.key] = nil
    end
end

local function add_answer(message, link, now)
    local command = message.thread.command
    if not command or command.id ~= message.id then
        return
    end
    tie(link, now, command)
    link.session = link.session or command.session
    if not command.key then
        open[command.number] = nil
    end
    if message.value ~= 0 then
        forget(command)
    end
    message.thread.command = nil
end

local function add_event(message, link, now)
    local any = any_handle[message.id]
    local key = key_of(message.id, not any and link.session or nil)
    local queue = (any or link.session) and queues[key]
    if queue then
        local command = queue[queue.first]
        queue[queue.first] = nil
        queue.first = queue.first + 1
        if queue.last < queue.first then
            queues[key] = nil
        end
        open[command.number] = nil
        tie(link, now, command)
        link.ambiguous = command.ambiguous
    end
    message.thread.event = {number = now.number, id = message.id, time = now.time,
        session = link.session}
end

local function add_refusal(message, link, now)
    local event = message.thread.event
    if not event or event.id ~= message.id then
        return
    end
    tie(link, now, event)
    link.session = event.session
    message.thread.event = nil
end

-- The time since the first packet is exact to the nanosecond for 52 days; that since 1970 is not.
local function pair(message, known, handle, pinfo)
    local number = pinfo.number
    local now = {number = number, time = math.floor(pinfo.rel_ts * 1000000000 + 0.5)}
    local link = {session = handle}
    links[number] = link
    message.thread = threads[message.thread_id]
    if not message.thread then
        message.thread = {}
        threads[message.thread_id] = message.thread
    end
    if message.kind == COMMAND then
        add_command(message, known, handle, now)
    elseif message.kind == ANSWER then
        add_answer(message, link, now)
    elseif message.kind == EVENT then
        add_event(message, link, now)
    elseif message.kind == REFUSED then
        add_refusal(message, link, now)
    end
end

-- The record.

local function add_reserved(tree, bytes, from, to)
    to = math.min(to, bytes:len())
    if from < to and bytes:raw(from, to - from):find("[^\0]") then
        local item = tree:add(own.reserved, bytes(from, to - from))
        item:set_text("reserved at " .. from)
        item:add_proto_expert_info(experts.reserved)
    end
end

local function add_numbers(tree, field, bytes)
    local whole = math.floor(bytes:len() / field.size)
    for i = 0, whole - 1 do
        local range = bytes(i * field.size, field.size)
        local item = tree:add_le(field.proto, range)
        if field.count > 1 then
            local value = field.kind == "signed" and range:le_int() or range:le_uint()
            item:set_text(("%s[%d]: %d"):format(field.name, i, value))
        end
    end
    local rest = bytes:len() - whole * field.size
    if rest > 0 then
        tree:add(own.cut, bytes(whole * field.size, rest)):prepend_text(field.name .. ": ")
    end
end

local add_fields

local function add_records(tree, field, bytes)
    local i = 0
    while i * field.size < bytes:len() do
        local from = i * field.size
        local element = bytes(from, math.min(field.size, bytes:len() - from))
        local item = tree:add(field.proto, element)
        if field.count > 1 then
            item:set_text(("%s[%d]"):format(field.name, i))
        end
        add_fields(item, field.layout, element)
        i = i + 1
    end
end

-- Of a record there may be less than its layout says. `bytes` is a range.
function add_fields(tree, layout, bytes)
    local length, finish = bytes:len(), 0
    for _, field in ipairs(layout.fields) do
        add_reserved(tree, bytes, finish, field.offset)
        finish = field.offset + field.size * field.count
        if field.offset >= length then
            return
        end
        local range = bytes(field.offset, math.min(field.size * field.count, length - field.offset))
        if field.kind == "record" then
            add_records(tree, field, range)
        elseif field.kind == "bytes" then
            tree:add(field.proto, range)
        elseif field.kind == "text" then
            tree:add(field.proto, range, utf8_text(until_zero(range:raw())))
        elseif field.kind == "utf16" then
            tree:add(field.proto, range, utf16_text(range:raw()))
        else
            add_numbers(tree, field, range)
        end
    end
    add_reserved(tree, bytes, finish, layout.size)
end

local function layout_of(message, known)
    if not known then
        return nil
    elseif message.kind == ANSWER then
        return known.answer_layout
    elseif message.kind == COMMAND or message.kind == EVENT then
        return known.layout
    end
    return nil
end

local function bytes_text(count)
    return count .. (count == 1 and " byte" or " bytes")
end

local function add_record(tree, message, buffer)
    local layout = message.layout
    local length = buffer:len() - HEADER
    local item = tree
    if length > 0 then
        item = tree:add(own.record, buffer(HEADER))
        if layout then
            item:set_text(layout.name .. ", " .. bytes_text(length))
            add_fields(item, layout, buffer(HEADER, math.min(length, layout.size)))
        end
    end
    -- An answer need not have bytes.
    if layout and length < layout.size and (length > 0 or message.kind ~= ANSWER) then
        item:add_proto_expert_info(experts.ends_at,
            ("The record ends here, %d of %s"):format(length, bytes_text(layout.size)))
    elseif layout and length > layout.size then
        item:add(own.surplus, buffer(HEADER + layout.size)):add_proto_expert_info(experts.surplus)
    end
    local left_out = buffer:reported_len() - buffer:len()
    if left_out > 0 then
        tree:add(own.left_out, left_out):add_proto_expert_info(experts.left_out)
    end
end

-- What is shown of all messages alike.

local function add_header(tree, message, known, buffer)
    tree:add(own.version, buffer(0, 1))
    local kind = tree:add(own.kind, buffer(1, 1))
    if not KINDS[message.kind] then
        kind:add_proto_expert_info(experts.unknown, "Unknown kind")
    end
    tree:add(own.surfaces, buffer(2, 1))
    if message.bytes:byte(4) ~= 0 then
        tree:add(own.header_reserved, buffer(3, 1)):add_proto_expert_info(experts.reserved)
    end
    tree:add_le(own.thread_id, buffer(4, 4))
    local id = tree:add_le(own.id, buffer(8, 4))
    if known then
        tree:add(own.name, buffer(8, 4), known.name):set_generated()
    else
        id:add_proto_expert_info(experts.unknown, "Unknown message")
    end
    local value = tree:add_le(own.value, buffer(12, 4))
    if message.kind == REFUSED then
        value:add_proto_expert_info(experts.refused)
    elseif message.kind == ANSWER and message.value ~= 0 then
        value:add_proto_expert_info(experts.not_taken)
    end
    tree:add_le(own.size, buffer(16, 4))
    local name = utf8_text(until_zero(message.bytes:sub(21, HEADER)))
    tree:add(own.thread, buffer(20, 16), name)
end

local function add_link(tree, link, number, visited)
    if link.session then
        tree:add(own.session, link.session):set_generated()
    end
    if link.partner then
        tree:add(own.partner, link.partner):set_generated()
        tree:add(own.latency, link.latency):set_generated()
        local item = tree:add(own.ambiguous, link.ambiguous or false):set_generated()
        if link.ambiguous then
            item:add_proto_expert_info(experts.ambiguous)
        end
    end
    for _, answer in ipairs(link.answers or {}) do
        tree:add(own.answered_in, answer):set_generated()
    end
    if visited and open[number] then
        tree:add_proto_expert_info(experts.unanswered)
    end
end

local function result_of(message, layout, bytes)
    if not layout or message.kind == COMMAND then
        return nil
    end
    return number_in(layout, bytes, "result") or number_in(layout, bytes, "return_value")
end

local function add_result(tree, result)
    if result then
        local item = tree:add(own.result, result):set_generated()
        if result ~= 0 then
            item:add_proto_expert_info(experts.result)
        end
    end
end

local function has_reserved(layout, bytes)
    for _, span in ipairs(layout.reserved) do
        if bytes:find("[^\0]", HEADER + span.from + 1) and
                bytes:sub(HEADER + span.from + 1, HEADER + span.to):find("[^\0]") then
            return true
        end
    end
    return false
end

-- Whether there is anything to say of a message as an expert item: these are wanted without the
-- tree as well.
local function is_remarkable(message, known, link, pinfo, buffer)
    local layout = message.layout
    local size = layout and HEADER + layout.size
    return message.kind == REFUSED or message.value ~= 0 or not known or not KINDS[message.kind] or
        link.ambiguous or (message.result or 0) ~= 0 or message.bytes:byte(4) ~= 0 or
        buffer:reported_len() > buffer:len() or (size and size ~= buffer:len()) or
        (pinfo.visited and open[pinfo.number]) or (layout and has_reserved(layout, message.bytes))
end

local function info_text(message, known, link)
    local text = known and known.name or ("0x%08x"):format(message.id)
    if message.kind == ANSWER or message.kind == REFUSED then
        text = text .. " " .. (message.kind == ANSWER and "answer" or "refused")
    end
    if link.session then
        text = text .. " h=" .. link.session
    end
    if message.result then
        text = text .. " r=" .. message.result
    end
    if message.kind == REFUSED or (message.kind == ANSWER and message.value ~= 0) then
        text = text .. " ret=" .. message.value
    end
    return text
end

-- Addresses, which the flow graph needs: the service is 0.0.0.0, and thread 4711 is 0.0.47.11.
local SERVICE = Address.ip("0.0.0.0")
local thread_addresses = {}

local function address_of(thread)
    local address = thread_addresses[thread]
    if not address then
        local floor = math.floor
        address = Address.ip(("%d.%d.%d.%d"):format(floor(thread / 1000000) % 256,
            floor(thread / 10000) % 100, floor(thread / 100) % 100, thread % 100))
        thread_addresses[thread] = address
    end
    return address
end

local function set_columns(pinfo, message, text)
    pinfo.cols.protocol = "DTV"
    pinfo.cols.info = text
    local thread = address_of(message.thread_id)
    if message.kind == ANSWER or message.kind == EVENT then
        pinfo.src, pinfo.dst = SERVICE, thread
    else
        pinfo.src, pinfo.dst = thread, SERVICE
    end
end

local function refuse(buffer, pinfo, tree, one, text)
    pinfo.cols.protocol = "DTV"
    pinfo.cols.info = text
    local item = buffer:len() > 0 and tree:add(dtv, buffer()) or tree:add(dtv)
    item:add_proto_expert_info(one, text)
end

-- Of this dissector, to be asked whether a filter needs it.
local this_dissector

function dtv.dissector(buffer, pinfo, root)
    local length = buffer:len()
    if length > 0 and buffer(0, 1):uint() ~= VERSION then
        refuse(buffer, pinfo, root, experts.version,
            ("A message of version %d; this dissector reads version %d"):format(
                buffer(0, 1):uint(), VERSION))
        return length
    elseif length < HEADER then
        refuse(buffer, pinfo, root, experts.short,
            ("%s; a message begins with %d"):format(bytes_text(length), HEADER))
        return length
    end
    local bytes = buffer:raw()
    local message = {
        bytes = bytes,
        kind = bytes:byte(2),
        thread_id = number_at(bytes, 4, 4),
        id = number_at(bytes, 8, 4),
        value = number_at(bytes, 12, 4, true),
    }
    local known = messages[message.id]
    local layout = layout_of(message, known)
    message.layout = layout
    message.result = result_of(message, layout, bytes)
    if not pinfo.visited then
        pair(message, known, layout and number_in(layout, bytes, "handle"), pinfo)
    end
    local link = links[pinfo.number] or {}
    local text = info_text(message, known, link)
    set_columns(pinfo, message, text)
    this_dissector = this_dissector or Dissector.get("dtv")
    if root.visible or root:referenced(this_dissector) or
            is_remarkable(message, known, link, pinfo, buffer) then
        local tree = root:add(dtv, buffer())
        tree:append_text(", " .. text)
        add_header(tree, message, known, buffer)
        add_result(tree, message.result)
        add_link(tree, link, pinfo.number, pinfo.visited)
        add_record(tree, message, buffer)
    end
    return length
end

DissectorTable.get("wtap_encap"):add(wtap.USER0, dtv)
