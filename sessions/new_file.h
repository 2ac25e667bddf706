// A file that has its name when it is whole, and not before.
#pragma once

#include <cstddef>
#include <string>

namespace sessions {

/// Takes the place of a file, or makes it. Until keep() succeeds, what is written is in a temporary
/// file beside it, which is removed with the object.
class NewFile {
public:
    NewFile() = default;
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Whether the file can be made; `error` says why not. A file of that name must be a regular
    /// one.
    bool open(const std::string& path, std::string& error);

    /// After a failure nothing more is written; keep() says what went wrong.
    void write(const std::string& bytes);
    bool failed() const { return !failure_.empty(); }

    /// Writes the rest and gives the file its name. False, and why in `error`, when not all could
    /// be written: there is no file then, or still the earlier one.
    bool keep(std::string& error);

    /// Removes the temporary file of the object that has one. A signal's handler may call it.
    static void removeTemporary();

private:
    void flush();
    void remove();

    std::string path_;
    std::string temporary_;
    int descriptor_ = -1;
    std::string buffer_;
    std::string failure_;
};

} // namespace sessions
