#include "runner/records.h"

#include "records/messages.h"

#include <cstring>

namespace bench {
namespace {

constexpr uint32_t kChannel = 27;
constexpr uint16_t kService = 1;

template <size_t Size>
void put(char (&field)[Size], const std::string& text) {
    std::memcpy(field, text.data(), text.size() < Size ? text.size() : Size);
}

/// UTF-16 units of an ASCII text, repeated until the field is full.
template <size_t Size>
void fillUnits(char (&field)[Size], const std::string& text) {
    for (size_t i = 0; i < Size / 2; ++i) {
        const auto unit = static_cast<uint16_t>(static_cast<unsigned char>(text[i % text.size()]));
        std::memcpy(field + 2 * i, &unit, sizeof(unit));
    }
}

std::string repeated(const std::string& text, size_t length) {
    std::string whole;
    while (whole.size() + text.size() <= length) {
        whole += text;
    }
    return whole;
}

TS_COMMON_REPLY createReply() {
    TS_COMMON_REPLY record = {};
    record.result = 7;
    return record;
}

TS_NETWORK_INFO_NOTIFY networkInfo() {
    TS_NETWORK_INFO_NOTIFY record = {};
    record.physical_channel = kChannel;
    NETWORK_INFO& network = record.network;
    network.ts_id = 1632;
    network.ts_name_size = 20;
    put(network.ts_name, "TV Cultura S\u00e3o Paulo");
    network.nw_id = 1632;
    network.nw_name_size = 11;
    put(network.nw_name, "Rede Brasil");
    network.remocon_id = 32;
    network.partialsvc_cnt = 2;
    network.partialsvc[0] = 52248;
    network.partialsvc[1] = 52249;
    return record;
}

TS_SERVICE_INFO_NOTIFY serviceInfo() {
    TS_SERVICE_INFO_NOTIFY record = {};
    record.physical_channel = kChannel;
    record.service_no = kService;
    record.ts_id = 1632;
    record.svc_cnt = 8;
    for (uint32_t i = 0; i < record.svc_cnt; ++i) {
        record.service[i].service_id = 52224 + i;
        record.service[i].name_size = 13;
        put(record.service[i].name, "Rede Brasil " + std::to_string(i));
    }
    return record;
}

PRG_INFO programme(uint16_t hour) {
    PRG_INFO info = {};
    info.evtId = 4000u + hour;
    info.start_date = {2024, 5, 17};
    info.start_time = {hour, 30, 0, 0};
    info.start_day_of_week = 5;
    info.duration = {1, 0, 0, 0};
    info.nibble_cnt = 7;
    for (uint8_t i = 0; i < info.nibble_cnt; ++i) {
        info.content_nibble[i] = static_cast<uint8_t>(0x30 + i);
        info.user_nibble[i] = i;
    }
    info.name_size = sizeof(info.name) / 2;
    fillUnits(info.name, "Conversa de fim de noite ");
    info.text_size = sizeof(info.text) / 2;
    fillUnits(info.text, "Entrevistas e debates sobre os temas do dia. ");
    return info;
}

TS_RECEIVE_EPG_INFO_NOTIFY guide() {
    TS_RECEIVE_EPG_INFO_NOTIFY record = {};
    record.physical_channel = kChannel;
    record.service_no = kService;
    record.svc_id = 52248;
    record.current = programme(12);
    record.next = programme(13);
    record.after_prg_infoCnt = 8;
    for (uint16_t i = 0; i < record.after_prg_infoCnt; ++i) {
        record.after[i] = programme(static_cast<uint16_t>(14 + i));
    }
    return record;
}

TS_MAIL_REQ mailRequest() {
    TS_MAIL_REQ record = {};
    put(record.title, "Vota\u00e7\u00e3o do programa: quem fica at\u00e9 o fim?");
    put(record.send_address, "votacao@redebrasil.example");
    put(record.data, repeated("Meu voto \u00e9 para a segunda candidata da noite. ", 2000));
    return record;
}

template <typename Record>
EventRecord event(const char* name, int id, int handle, Record record) {
    record.handle = static_cast<uint16_t>(handle);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&record);
    return {name, id, std::vector<unsigned char>(bytes, bytes + sizeof(record))};
}

} // namespace

std::vector<EventRecord> eventRecords(int handle) {
    return {
        event("CREATE_REPLY", event_id::kCreateReply, handle, createReply()),
        event("NETWORK_INFO", event_id::kNetworkInfoNotify, handle, networkInfo()),
        event("SERVICE_INFO", event_id::kServiceInfoNotify, handle, serviceInfo()),
        event("GUIDE", event_id::kReceiveEpgInfoNotify, handle, guide()),
        event("MAIL_REQ", event_id::kBmlMailReq, handle, mailRequest()),
    };
}

} // namespace bench
