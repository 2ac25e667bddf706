#include "desk/redact/copy.h"

#include "sessions/capture_reader.h"
#include "sessions/capture_writer.h"
#include "sessions/message.h"
#include "sessions/new_file.h"

#include <optional>

namespace redact {
namespace {

using sessions::CaptureReader;

class Copying {
public:
    /// All must outlive the object.
    Copying(std::istream& file, sessions::NewFile& copy, sessions::Redaction& redaction,
            const std::function<void(const std::string&)>& report)
        : reader_(file), copy_(copy), redaction_(redaction), report_(report) {}

    /// As far as there are messages and the copy can be written.
    void run() {
        copyPackets();
        while (!reader_.error().empty() && !copy_.failed()) {
            const std::string error = reader_.error();
            const std::optional<sessions::Gap> gap = reader_.resume();
            report(gap ? error + "; dropped " + std::to_string(gap->size) + " bytes, to byte " +
                             std::to_string(gap->offset + gap->size)
                       : error);
            if (!gap) {
                break;
            }
            copyPackets();
        }
        if (messages_ == 0) {
            copySection();
        }
    }

    bool isDamaged() const { return damaged_; }
    uint64_t messages() const { return messages_; }
    uint64_t blocks() const { return reader_.passedBlocks(); }
    uint64_t options() const { return reader_.passedOptions() + dropped_notes_; }

private:
    void report(const std::string& what) {
        damaged_ = true;
        report_(what);
    }

    void copyPackets() {
        while (!copy_.failed()) {
            const auto packet = reader_.next();
            if (!packet) {
                return;
            }
            std::string error;
            auto message = sessions::readMessage(*packet, error);
            if (!message) {
                report(error + "; dropped");
                continue;
            }
            if (messages_ == 0 || packet->section != section_) {
                copySection();
            }
            section_ = packet->section;
            redaction_.redact(*message);
            copy_.write(writer_.packet(*message, keep(packet->notes)));
            ++messages_;
        }
    }

    void copySection() { copy_.write(writer_.section("dtv-redact", keep(reader_.section()))); }

    /// The notes that the copy has.
    sessions::Notes keep(const sessions::Notes& notes) {
        return sessions::publicNotes(notes, dropped_notes_);
    }

    CaptureReader reader_;
    sessions::NewFile& copy_;
    sessions::Redaction& redaction_;
    const std::function<void(const std::string&)>& report_;
    sessions::CaptureWriter writer_;
    uint64_t messages_ = 0;
    uint64_t dropped_notes_ = 0;
    uint32_t section_ = 0;
    bool damaged_ = false;
};

} // namespace

Copied copyCapture(std::istream& file, const std::string& copy, sessions::Redaction& redaction,
                   const std::function<void(const std::string&)>& report) {
    Copied result;
    sessions::NewFile target;
    std::string error;
    if (!target.open(copy, error)) {
        report(error);
        return result;
    }
    Copying copying(file, target, redaction, report);
    copying.run();
    result.messages = copying.messages();
    result.blocks = copying.blocks();
    result.options = copying.options();
    if (copying.isDamaged() && copying.messages() == 0) {
        report("there is nothing to copy");
        return result;
    }
    if (!target.keep(error)) {
        report(error);
        return result;
    }
    result.state = copying.isDamaged() ? Copied::State::kDamaged : Copied::State::kWhole;
    return result;
}

} // namespace redact
