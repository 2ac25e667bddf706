-- Texts and numbers in the bytes of a packet.

local SIGN_BITS = {0x80, 0x8000, 0x800000, 0x80000000}
-- What is shown for what is no text: U+FFFD.
local REPLACEMENT = "\239\191\189"

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

local frame_comment = Field.new("frame.comment")

-- Of a capture that was made of a log: the bytes of the packet's record that the log lacks, as the
-- packet's comment says it. Nil when all are known.
local unknown_bytes

local ALL_UNKNOWN = setmetatable({}, {__index = function() return true end})

local function read_list(list)
    local found = {}
    for span in (list .. ","):gmatch("([^,]*),") do
        local from, to = span:match("^(%d+)%-?(%d*)$")
        local first, last = tonumber(from), tonumber(to == "" and from or to)
        if not first or last < first or span:sub(-1) == "-" then
            return ALL_UNKNOWN
        end
        for at = first, math.min(last, 65535) do
            found[at] = true
        end
    end
    return found
end

local function read_unknown()
    unknown_bytes = nil
    for _, comment in ipairs({frame_comment()}) do
        local list = ("\n" .. tostring(comment) .. "\n"):match("\nincomplete=([^\n]*)\n")
        unknown_bytes = unknown_bytes or (list and read_list(list))
    end
end

-- Whether bytes of a field of the record are not known.
local function is_unknown_field(field)
    for at = field and field.offset or 0,
            unknown_bytes and field and field.offset + field.size - 1 or -1 do
        if unknown_bytes[at] then
            return true
        end
    end
    return false
end

-- A number of the record by the name of its field, or nil, also when not all its bytes are known.
-- `bytes` are those of the packet.
local function number_in(layout, bytes, name)
    local field = layout.by_name[name]
    if not field or is_unknown_field(field) then
        return nil
    end
    return number_at(bytes, HEADER + field.offset, field.size, field.kind == "signed")
end
