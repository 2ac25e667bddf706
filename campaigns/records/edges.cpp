#include "records/edges.h"

#include <elf.h>
#include <link.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

namespace hostile {
namespace {

struct Section {
    uintptr_t address = 0; ///< from the library's begin
    size_t size = 0;
};

/// The section of this name in an ELF file; an empty one when there is none.
Section findSection(const std::string& file, const char* name) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    ElfW(Ehdr) head;
    if (bytes.size() < sizeof head) {
        return {};
    }
    std::memcpy(&head, bytes.data(), sizeof head);
    std::vector<ElfW(Shdr)> sections(head.e_shnum);
    const size_t length = sections.size() * sizeof(ElfW(Shdr));
    if (sections.empty() || head.e_shoff + length > bytes.size() ||
        head.e_shstrndx >= sections.size()) {
        return {};
    }
    std::memcpy(sections.data(), bytes.data() + head.e_shoff, length);
    const size_t names = sections[head.e_shstrndx].sh_offset;
    for (const ElfW(Shdr) & section : sections) {
        const size_t at = names + section.sh_name;
        if (at < bytes.size() && std::strcmp(bytes.c_str() + at, name) == 0) {
            return {static_cast<uintptr_t>(section.sh_addr), static_cast<size_t>(section.sh_size)};
        }
    }
    return {};
}

struct Wanted {
    std::string file;
    uintptr_t begin = 0;
};

std::string realPath(const char* path) {
    char* const resolved = realpath(path, nullptr);
    std::string text = resolved != nullptr ? resolved : path;
    std::free(resolved);
    return text;
}

int findLibrary(dl_phdr_info* info, size_t, void* data) {
    auto* const wanted = static_cast<Wanted*>(data);
    if (info->dlpi_name == nullptr || realPath(info->dlpi_name) != wanted->file) {
        return 0;
    }
    wanted->begin = info->dlpi_addr;
    return 1;
}

} // namespace

Edges::Edges(const std::string& library) {
    Wanted wanted{realPath(library.c_str())};
    const Section section = findSection(wanted.file, "__sancov_cntrs");
    if (section.size != 0 && dl_iterate_phdr(&findLibrary, &wanted) == 1) {
        counters_ = reinterpret_cast<const uint8_t*>(wanted.begin + section.address);
        count_ = section.size;
    }
}

void Edges::addTo(uint8_t* seen) const {
    const uint8_t* __restrict counters = counters_;
    uint8_t* __restrict to = seen;
    const size_t count = count_;
    for (size_t i = 0; i < count; ++i) {
        to[i] |= counters[i];
    }
}

} // namespace hostile
