#include "receiver/browser_requests.h"

#include "messages/text.h"
#include "records/bml_records.h"
#include "records/message_ids.h"
#include "service/service.h"

#include <algorithm>
#include <cstring>

namespace simulator {
namespace {

// A broadcaster's document that offers a quiz, a recipe and a reminder of tomorrow's programme.
constexpr uint8_t kAffiliation = 2;
constexpr uint16_t kNetwork = 1620;
constexpr uint16_t kServiceId = 51864;
constexpr uint8_t kBlock = 5;
constexpr BML_TIME kTomorrow{2026, 4, 2, 4, 19, 30, 0}; ///< a Thursday

void sendPermission(Service& service, uint16_t handle) {
    TS_PERMISSION_REQ request{};
    request.handle = handle;
    request.permit_type = 1;
    request.task_id = kPermissionTask;
    service.send(event_id::kBmlPermissionReq, request);
}

void sendAuth(Service& service, uint16_t handle) {
    TS_AUTH_REQ request{};
    request.handle = handle;
    request.task_id = kAuthTask;
    service.send(event_id::kBmlAuthReq, request);
}

void sendWriteNvram(Service& service, uint16_t handle) {
    TS_WRITE_NVRAM_REQ request{};
    request.handle = handle;
    request.affiliation_id = kAffiliation;
    request.network_id = kNetwork;
    request.block_no = kBlock;
    const NvramContents contents = documentMemory();
    std::copy(contents.owner.begin(), contents.owner.end(), request.ts_name);
    std::copy(contents.data.begin(), contents.data.end(), request.data);
    service.send(event_id::kBmlWriteNvramReq, request);
}

void sendReadNvram(Service& service, uint16_t handle) {
    TS_READ_NVRAM_REQ request{};
    request.handle = handle;
    request.affiliation_id = kAffiliation;
    request.network_id = kNetwork;
    request.block_no = kBlock;
    service.send(event_id::kBmlReadNvramReq, request);
}

void sendFep(Service& service, uint16_t handle) {
    TS_START_FEP_REQ request{};
    request.handle = handle;
    request.input_max = 20;
    writeText(request.data, "クイズの答え");
    service.send(event_id::kBmlStartFepReq, request);
}

void sendMail(Service& service, uint16_t handle) {
    TS_MAIL_REQ request{};
    request.handle = handle;
    writeText(request.title, "Participação no quiz");
    writeText(request.send_address, "quiz@example.com");
    writeText(request.data, "Minha resposta é a terceira. 答えは三番です。");
    service.send(event_id::kBmlMailReq, request);
}

void sendPhonebook(Service& service, uint16_t handle) {
    TS_PHONEBOOK_REQ request{};
    request.handle = handle;
    writeText(request.name, "視聴者センター");
    writeText(request.name_kana, "シチョウシャセンター");
    writeText(request.phone_number, "0120000000");
    writeText(request.mail_address, "center@example.com");
    service.send(event_id::kBmlPhonebookReq, request);
}

void sendCall(Service& service, uint16_t handle) {
    TS_CALL_REQ request{};
    request.handle = handle;
    writeText(request.phone_number, "0120000000");
    service.send(event_id::kBmlCallReq, request);
}

void sendSchedule(Service& service, uint16_t handle) {
    TS_SCHEDULE_REQ request{};
    request.handle = handle;
    request.time = kTomorrow;
    writeText(request.title, "明日の料理");
    writeText(request.text, "Receita de amanhã: pão de queijo");
    request.alarm_flag = 1;
    service.send(event_id::kBmlScheduleReq, request);
}

template <class Record>
void fillPages(Record& request, uint16_t handle) {
    request.handle = handle;
    request.app_id = 1;
    request.permit_av = 1;
    request.full_screen = 1;
    writeText(request.return_uri, "arib://-1.-1.-1/-1/0000/startup.bml");
    writeText(request.combrowser_uri, "http://example.com/receita?dia=amanh%C3%A3");
}

void sendBrowser(Service& service, uint16_t handle) {
    TS_BROWSER_REQ request{};
    fillPages(request, handle);
    service.send(event_id::kBmlBrowserReq, request);
}

void sendSavePicture(Service& service, uint16_t handle) {
    TS_SAVE_PICTURE_REQ request{};
    request.handle = handle;
    request.src_resource_size =
        static_cast<uint32_t>(writeText(request.src_resource, "/0001/pao_de_queijo.jpg"));
    request.filename_size = static_cast<uint32_t>(writeText(request.filename, "pão.jpg"));
    request.image_data_size = 20480;
    service.send(event_id::kBmlSavePictureReq, request);
}

void sendStartTvLink(Service& service, uint16_t handle) {
    TS_BROWSER_REQ request{};
    fillPages(request, handle);
    service.send(event_id::kBmlStartTvlinkReq, request);
}

void sendEnrolTvLink(Service& service, uint16_t handle) {
    TS_ENROL_TVLINK_REQ request{};
    request.handle = handle;
    writeText(request.title, "料理のページ");
    writeText(request.uri, "http://example.com/receitas");
    writeText(request.description, "Todas as receitas da semana");
    request.cpro_bmtype = 1;
    // From the second to the year.
    const uint16_t expires[7] = {kTomorrow.date_sec, kTomorrow.date_min, kTomorrow.date_hour,
                                 kTomorrow.date_dow, kTomorrow.date_day, kTomorrow.date_month,
                                 kTomorrow.date_year};
    std::memcpy(request.expire_date, expires, sizeof expires);
    request.network_id = kNetwork;
    request.service_id = kServiceId;
    const uint8_t affiliations[6] = {kAffiliation, 0x7f, 0x80, 0xff, 0, 1};
    std::memcpy(request.affiliation_id, affiliations, sizeof affiliations);
    service.send(event_id::kBmlEnrolTvlinkReq, request);
}

constexpr void (*kSenders[])(Service&, uint16_t) = {
    sendPermission,  sendAuth,        sendWriteNvram,  sendReadNvram, sendFep,
    sendMail,        sendPhonebook,   sendCall,        sendSchedule,  sendBrowser,
    sendSavePicture, sendStartTvLink, sendEnrolTvLink,
};
static_assert(sizeof kSenders / sizeof *kSenders == kBrowserRequests,
              "one sender for each request");

} // namespace

NvramBlock documentBlock() {
    return {kAffiliation, kNetwork, kBlock};
}

NvramContents documentMemory() {
    NvramContents contents{};
    writeText(contents.owner.data(), contents.owner.size(), "テレビ机");
    for (size_t index = 0; index < contents.data.size(); ++index) {
        contents.data[index] = static_cast<uint8_t>(index * 5 + 128); // both signs of a Java byte
    }
    return contents;
}

void sendBrowserRequest(Service& service, uint16_t handle, size_t place) {
    kSenders[place](service, handle);
}

} // namespace simulator
