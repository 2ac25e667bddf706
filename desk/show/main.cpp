// dtv-show: prints a capture of the messages.
#include "desk/show/message.h"
#include "sessions/capture_reader.h"

#include "records/catalogue.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kGood = 0;
constexpr int kBadFile = 1;  ///< it is no capture, or not whole
constexpr int kNotBegun = 2; ///< wrong arguments, or a file that cannot be opened

constexpr char kUsage[] = R"(usage: dtv-show [--only NAME]... FILE
       dtv-show --list

Prints the messages of a capture, each decoded field by field. FILE is - for
standard input, whose messages are printed as they come. What is damaged is
skipped, and what was skipped is said. Exit status: 0 when the whole file was
read, 1 when it is no capture or is cut or damaged (everything else is printed),
2 when it cannot be opened or an argument is wrong.

  --only NAME  prints only the messages of that name, such as SelectChannel;
               may be repeated
  --list       prints the messages that are known: number, size of the record
               in bytes, name, record
  --help       shows this
)";

struct Options {
    std::set<int> only; ///< numbers of the messages to print; empty for all
    std::string file;   ///< empty when none was given
    bool list = false;
    bool help = false;
};

int complain(const std::string& what) {
    std::cerr << "dtv-show: " << what << '\n';
    return kNotBegun;
}

int complainOfUse(const std::string& what) {
    complain(what);
    std::cerr << kUsage;
    return kNotBegun;
}

/// How many letters must be put in, left out or exchanged to make one name the other; capitals do
/// not count.
size_t distance(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    std::vector<size_t> row(other.size() + 1);
    for (size_t j = 0; j < row.size(); ++j) {
        row[j] = j;
    }
    for (size_t i = 1; i <= one.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j < row.size(); ++j) {
            const size_t exchanged = diagonal + (lower(one[i - 1]) == lower(other[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchanged});
        }
    }
    return row.back();
}

std::string nearestName(std::string_view wanted) {
    std::string_view nearest;
    size_t smallest = std::string_view::npos;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const catalogue::Message& message : *messages) {
            const size_t found = distance(wanted.substr(0, 64), message.name);
            if (found < smallest) {
                smallest = found;
                nearest = message.name;
            }
        }
    }
    return std::string(nearest);
}

void list() {
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const catalogue::Message& message : *messages) {
            std::printf("0x%08x %4zu %-32s %s\n", static_cast<unsigned>(message.id),
                        message.record->size, std::string(message.name).c_str(),
                        message.record->name.c_str());
            if (message.reply != nullptr) {
                std::printf("%10s %4zu %-32s %s\n", "", message.reply->size, "  its answer",
                            message.reply->name.c_str());
            }
        }
    }
}

int finish(int status) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        complain("cannot write to standard output");
        return kBadFile;
    }
    return status;
}

/// Prints messages, and counts them.
class Printer {
public:
    Printer(const Options& options, bool at_once) : options_(options), at_once_(at_once) {}

    void print(const sessions::Message& message) {
        ++count_;
        if (!options_.only.empty() && options_.only.count(message.id) == 0) {
            return;
        }
        ++printed_;
        const show::LocalTime time = show::localTime(message.time);
        if (time.date != date_) {
            date_ = time.date;
            std::printf("%s\n", date_.c_str());
        }
        for (const std::string& line : show::messageLines(message, time.time)) {
            std::printf("%s\n", line.c_str());
        }
        if (at_once_) {
            std::fflush(stdout);
        }
    }

    void printCount() const {
        if (options_.only.empty()) {
            std::printf("%zu message%s\n", count_, count_ == 1 ? "" : "s");
        } else {
            std::printf("%zu of %zu message%s\n", printed_, count_, count_ == 1 ? "" : "s");
        }
    }

private:
    const Options& options_;
    const bool at_once_; ///< each message as soon as it is there
    std::string date_;   ///< printed last
    size_t count_ = 0;
    size_t printed_ = 0;
};

/// Says what is wrong with a file; what was printed before comes before it on a terminal.
void complainOfFile(const std::string& name, const std::string& what) {
    std::fflush(stdout);
    complain(name + ": " + what);
}

/// The packets of a file as far as next() finds them. Whether all of them are messages.
bool printPackets(sessions::CaptureReader& reader, const std::string& name, Printer& printer) {
    bool good = true;
    while (const auto packet = reader.next()) {
        std::string error;
        if (const auto message = sessions::readMessage(*packet, error)) {
            printer.print(*message);
        } else {
            good = false;
            complainOfFile(name, error);
        }
    }
    return good;
}

int printMessages(std::istream& file, const std::string& name, const Options& options) {
    sessions::CaptureReader reader(file);
    Printer printer(options, &file == &std::cin);
    bool good = printPackets(reader, name, printer);
    while (!reader.error().empty()) {
        good = false;
        const std::string error = reader.error();
        const std::optional<sessions::Gap> gap = reader.resume();
        if (!gap) {
            // The count comes first, for the file ends here.
            printer.printCount();
            finish(kGood);
            complain(name + ": " + error);
            return kBadFile;
        }
        complainOfFile(name, error + "; skipped " + std::to_string(gap->size) + " bytes, to byte " +
                                 std::to_string(gap->offset + gap->size));
        good = printPackets(reader, name, printer) && good;
    }
    printer.printCount();
    const int status = finish(kGood);
    return good ? status : kBadFile;
}

int printMessages(const Options& options) {
    if (options.file == "-") {
        return printMessages(std::cin, "standard input", options);
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(options.file, ignored)) {
        return complain(options.file + " is a directory");
    }
    std::ifstream file(options.file, std::ios::binary);
    if (!file) {
        return complain("cannot open " + options.file + ": " + std::strerror(errno));
    }
    return printMessages(file, options.file, options);
}

/// Takes the argument of --only. The exit status when there is no such message.
std::optional<int> takeOnly(const std::string& name, Options& options) {
    const catalogue::Message* message = catalogue::find(name);
    if (message == nullptr) {
        return complain("no message is named " + name + "; the nearest is " + nearestName(name));
    }
    options.only.insert(message->id);
    return std::nullopt;
}

/// Takes an argument that is no option.
std::optional<int> takeFile(const std::string& name, Options& options) {
    if (!options.file.empty()) {
        return complainOfUse("one file at a time");
    }
    if (name.empty()) {
        return complainOfUse("the name of the file is empty");
    }
    options.file = name;
    return std::nullopt;
}

/// Reads the arguments up to the first that is wrong, for which it returns the exit status, or up
/// to
/// --help.
std::optional<int> takeArguments(const std::vector<std::string>& arguments, Options& options) {
    bool only_files = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        std::optional<int> status;
        if (only_files || argument.size() < 2 || argument[0] != '-') {
            status = takeFile(argument, options);
        } else if (argument == "--help" || argument == "-h") {
            options.help = true;
            return std::nullopt;
        } else if (argument == "--list") {
            options.list = true;
        } else if (argument == "--") {
            only_files = true;
        } else if (argument == "--only") {
            status = ++i == arguments.size() ? complainOfUse("--only needs the name of a message")
                                             : takeOnly(arguments[i], options);
        } else {
            status = complainOfUse("unknown option " + argument);
        }
        if (status) {
            return status;
        }
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (const auto status = takeArguments({argv + 1, argv + argc}, options)) {
        return *status;
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return finish(kGood);
    }
    if (options.list) {
        if (!options.file.empty() || !options.only.empty()) {
            return complainOfUse("--list takes no file and no name");
        }
        list();
        return finish(kGood);
    }
    if (options.file.empty()) {
        return complainOfUse("no file is given");
    }
    return printMessages(options);
}
