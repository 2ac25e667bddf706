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
    read_unknown()
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
    message.handle_is_unknown = layout and is_unknown_field(layout.by_name.handle)
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
