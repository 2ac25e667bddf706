-- The record.

local function add_reserved(tree, bytes, from, to)
    to = math.min(to, bytes:len())
    if from < to and bytes:raw(from, to - from):find("[^\0]") then
        local item = tree:add(own.reserved, bytes(from, to - from))
        item:set_text("reserved at " .. from)
        item:add_proto_expert_info(experts.reserved)
    end
end

-- Whether one of the first `length` bytes of a range is not known.
local function is_unknown(range, length)
    local start = range:offset() - HEADER
    for at = start, unknown_bytes and start + math.min(length, range:len()) - 1 or -1 do
        if unknown_bytes[at] then
            return true
        end
    end
    return false
end

-- A field of which bytes are not known has no value, so that no filter finds one.
local function add_unknown(tree, name, range)
    tree:add(own.unknown_field, range, name):set_text(name .. ": unknown")
end

local function add_numbers(tree, field, bytes)
    local whole = math.floor(bytes:len() / field.size)
    for i = 0, whole - 1 do
        local range = bytes(i * field.size, field.size)
        local name = field.count > 1 and ("%s[%d]"):format(field.name, i) or field.name
        if is_unknown(range, field.size) then
            add_unknown(tree, name, range)
        else
            local item = tree:add_le(field.proto, range)
            if field.count > 1 then
                local value = field.kind == "signed" and range:le_int() or range:le_uint()
                item:set_text(("%s: %d"):format(name, value))
            end
        end
    end
    local rest = bytes:len() - whole * field.size
    if rest > 0 then
        tree:add(own.cut, bytes(whole * field.size, rest)):prepend_text(field.name .. ": ")
    end
end

-- How many bytes of a text or of bytes say what it is: of a text those up to its end.
local function known_length(field, range)
    local bytes = range:raw()
    if field.kind == "text" then
        return #until_zero(bytes) + 1
    elseif field.kind == "utf16" then
        for at = 1, #bytes - 1, 2 do
            if bytes:byte(at) == 0 and bytes:byte(at + 1) == 0 then
                return at + 1
            end
        end
    end
    return #bytes
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
        elseif NUMBERS[field.kind] then
            add_numbers(tree, field, range)
        elseif unknown_bytes and is_unknown(range, known_length(field, range)) then
            add_unknown(tree, field.name, range)
        elseif field.kind == "bytes" then
            tree:add(field.proto, range)
        elseif field.kind == "text" then
            tree:add(field.proto, range, utf8_text(until_zero(range:raw())))
        elseif field.kind == "utf16" then
            tree:add(field.proto, range, utf16_text(range:raw()))
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
