-- Which messages belong together: see docs/capture.md. Filled in the first pass, message by message.

local NO_HANDLE = 65536

local links     -- by number: what is known of the message
local open      -- by number: whether the command waits
local threads   -- by thread number: its last command and event
local queues    -- commands that wait for an event, by event and handle
local section   -- of the last message; nil when Wireshark does not say it

local function forget_all()
    links, open, threads, queues, section = {}, {}, {}, {}, nil
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

-- The commands of a session that wait for an event and have a smaller number are never answered.
local function give_up(handle, before)
    for event in pairs(reply_events) do
        local key = key_of(event, handle)
        local queue = queues[key]
        while queue and queue.first <= queue.last and queue[queue.first].number < before do
            queue[queue.first] = nil
            queue.first = queue.first + 1
        end
        if queue and queue.last < queue.first then
            queues[key] = nil
        end
    end
end

-- If the message ends a session, or begins one with the handle of an earlier one.
local function end_session(message, link, now)
    local name = names[message.id]
    local release = name == "ReleaseReply" or name == "Release_Sync"
    if link.session and (release or name == "CreateReply") and message.value == 0 and
            message.result == 0 then
        give_up(link.session, release and link.partner or now.number)
    end
end

-- The messages of another section are of another run: its threads and handles are others. In the
-- first of two passes, Wireshark may not say the section.
local section_number = Field.new("frame.section_number")

local function notice_section()
    local field = section_number()
    local number = field and field.value
    if number and section and number ~= section then
        threads, queues = {}, {}
    end
    section = number or section
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
    open[command.number] = nil
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
    end_session(message, link, now)
end

-- The key of the queue with the oldest command that waits for an event, whatever its handle, and
-- whether there are several such queues.
local function oldest_waiting(event)
    local oldest, guessed
    for key, queue in pairs(queues) do
        if math.floor(key / 65537) == event then
            guessed = oldest ~= nil
            local number = queue[queue.first].number
            if not oldest or number < queues[oldest][queues[oldest].first].number then
                oldest = key
            end
        end
    end
    return oldest, guessed
end

local function add_event(message, link, now)
    local any = any_handle[message.id]
    local key = key_of(message.id, not any and link.session or nil)
    local queue, guessed = (any or link.session) and queues[key], false
    if message.handle_is_unknown and not any then
        key, guessed = oldest_waiting(message.id)
        queue = key and queues[key]
    end
    if queue then
        local command = queue[queue.first]
        queue[queue.first] = nil
        queue.first = queue.first + 1
        if queue.last < queue.first then
            queues[key] = nil
        end
        open[command.number] = nil
        tie(link, now, command)
        link.ambiguous = command.ambiguous or guessed
        link.session = link.session or command.session
    end
    message.thread.event = {number = now.number, id = message.id, time = now.time,
        session = link.session}
    end_session(message, link, now)
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
    notice_section()
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
