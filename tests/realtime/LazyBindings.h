#pragma once

#include <elf.h>
#include <link.h>

#include <map>
#include <string>
#include <vector>

namespace velmotest {

/// Where the program and the libraries that it has loaded find each function they call: by the address of the entry in
/// their tables that the loader fills in, at the latest when the function is called for the first time.
using LazyBindings = std::map<const ElfW(Addr)*, std::pair<std::string, ElfW(Addr)>>;

/// The tables of one loaded file, added to `bindings`.
inline void AddLazyBindings(const link_map& file, LazyBindings& bindings) {
    const ElfW(Rela)* relocations = nullptr;
    const ElfW(Sym)* symbols = nullptr;
    const char* names = nullptr;
    std::size_t numBytes = 0;
    for (const ElfW(Dyn)* entry = file.l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_JMPREL) relocations = reinterpret_cast<const ElfW(Rela)*>(entry->d_un.d_ptr);
        if (entry->d_tag == DT_PLTRELSZ) numBytes = entry->d_un.d_val;
        if (entry->d_tag == DT_SYMTAB) symbols = reinterpret_cast<const ElfW(Sym)*>(entry->d_un.d_ptr);
        if (entry->d_tag == DT_STRTAB) names = reinterpret_cast<const char*>(entry->d_un.d_ptr);
    }
    for (std::size_t i = 0; relocations != nullptr && i < numBytes / sizeof *relocations; ++i) {
        const ElfW(Sym)& symbol = symbols[ELF64_R_SYM(relocations[i].r_info)];
        const auto* const slot = reinterpret_cast<const ElfW(Addr)*>(file.l_addr + relocations[i].r_offset);
        bindings[slot] = {file.l_name + std::string(": ") + (names + symbol.st_name), *slot};
    }
}

/// What the whole process knows of its functions now.
inline LazyBindings GetLazyBindings() {
    LazyBindings bindings;
    for (const link_map* file = _r_debug.r_map; file != nullptr; file = file->l_next) AddLazyBindings(*file, bindings);
    return bindings;
}

/// The functions that were looked up in between, as "FILE: FUNCTION".
inline std::vector<std::string> BoundBetween(const LazyBindings& before, const LazyBindings& after) {
    std::vector<std::string> bound;
    for (const auto& [slot, binding] : before) {
        if (after.at(slot).second != binding.second) bound.push_back(binding.first);
    }
    return bound;
}

}  // namespace velmotest
