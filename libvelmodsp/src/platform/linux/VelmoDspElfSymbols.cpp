#include "platform/linux/VelmoDspElfSymbols.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace velmodsp {
namespace {

using ElfHeader = ElfW(Ehdr);
using ElfSection = ElfW(Shdr);
using ElfSymbol = ElfW(Sym);

/// A file's bytes in memory; none when it cannot be read.
class MappedFile {
public:
    explicit MappedFile(const char* path) {
        const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
        if (descriptor < 0) return;
        struct stat status;
        if (fstat(descriptor, &status) == 0 && status.st_size > 0)
            Map(descriptor, static_cast<std::size_t>(status.st_size));
        close(descriptor);
    }
    ~MappedFile() {
        if (size > 0) munmap(bytes, size);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// The record at that place; nothing when the file ends before its end.
    template <typename Record>
    std::optional<Record> Get(std::uint64_t offset) const {
        if (offset > size || size - offset < sizeof(Record)) return std::nullopt;
        Record record;
        std::memcpy(&record, static_cast<const char*>(bytes) + offset, sizeof record);
        return record;
    }

    /// The zero-terminated text at that place; "" when it does not end within the file.
    String GetText(std::uint64_t offset) const {
        if (offset >= size) return {};
        const char* text = static_cast<const char*>(bytes) + offset;
        return std::memchr(text, 0, size - offset) == nullptr ? String() : String(text);
    }

private:
    void Map(int descriptor, std::size_t length) {
        void* mapped = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (mapped == MAP_FAILED) return;
        bytes = mapped;
        size = length;
    }

    void* bytes = nullptr;
    std::size_t size = 0;
};

std::optional<ElfSection> GetSection(const MappedFile& file, const ElfHeader& header, std::size_t index) {
    if (header.e_shentsize != sizeof(ElfSection) || index >= header.e_shnum) return std::nullopt;
    return file.Get<ElfSection>(header.e_shoff + index * sizeof(ElfSection));
}

bool IsFunctionAt(const ElfSymbol& symbol, std::uint64_t place) {
    return (symbol.st_info & 0xf) == STT_FUNC && symbol.st_value <= place && place - symbol.st_value < symbol.st_size;
}

String FindFunction(const MappedFile& file, std::uint64_t place) {
    const auto header = file.Get<ElfHeader>(0);
    if (!header || std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0) return {};
    for (std::size_t i = 0; i < header->e_shnum; ++i) {
        const auto table = GetSection(file, *header, i);
        if (!table || table->sh_type != SHT_SYMTAB) continue;
        const auto names = GetSection(file, *header, table->sh_link);
        if (!names) continue;
        for (std::uint64_t offset = 0; offset < table->sh_size; offset += sizeof(ElfSymbol)) {
            const auto symbol = file.Get<ElfSymbol>(table->sh_offset + offset);
            if (!symbol) break;
            if (IsFunctionAt(*symbol, place)) return file.GetText(names->sh_offset + symbol->st_name);
        }
    }
    return {};
}

}  // namespace

String FunctionInModuleFile(const void* returnAddress) {
    Dl_info info;
    link_map* module = nullptr;
    if (dladdr1(returnAddress, &info, reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP) == 0) return {};
    const MappedFile file(*module->l_name == '\0' ? "/proc/self/exe" : module->l_name);
    // The call itself lies before the address it returns to, which may be that of the next function already.
    return FindFunction(file, reinterpret_cast<std::uintptr_t>(returnAddress) - module->l_addr - 1);
}

}  // namespace velmodsp
