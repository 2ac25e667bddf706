// What is printed of a capture, in each form.
#pragma once

#include "desk/show/filter.h"
#include "desk/show/options.h"

#include "sessions/message.h"
#include "sessions/pairing.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace show {

/// Prints on standard output. The numbers of the messages are those of the whole file, whatever the
/// filter leaves out.
class Printer {
public:
    virtual ~Printer() = default;
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    /// `offset` is that of the message's packet in the file, in bytes.
    void print(const sessions::Message& message, uint64_t offset);

    /// The messages that follow are of another section of the file.
    void beginSection() { pairing_.beginSection(); }

    /// In place of a packet that is no message.
    void pass() { pairing_.pass(); }

    /// Something is wrong with the file.
    virtual void report(const std::string& /*what*/) {}

    /// After the last message.
    virtual void end() = 0;

protected:
    /// With `at_once`, each message is written out before the next one is waited for.
    Printer(const Filter& filter, bool at_once) : filter_(filter), at_once_(at_once) {}

    virtual void write(const sessions::Message& message, const sessions::Link& link,
                       uint64_t offset) = 0;

    size_t count() const { return count_; }
    size_t printed() const { return printed_; }
    bool showsAll() const { return filter_.takesAll(); }
    std::vector<sessions::OpenCommand> open() const { return pairing_.open(); }
    void flush() const;

private:
    const Filter filter_;
    const bool at_once_;
    sessions::Pairing pairing_;
    size_t count_ = 0;
    size_t printed_ = 0;
};

/// `name` is that of the file.
std::unique_ptr<Printer> makePrinter(const Options& options, const std::string& name, bool at_once);

} // namespace show
