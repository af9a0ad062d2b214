// Symbols live for the whole process: plug-ins keep their pointers and compare them.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/OutOfMemory.h"
#include "ext.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

class SymbolTable {
public:
    t_symbol* Intern(std::string_view text) {
        const std::lock_guard lock(mutex);
        const auto found = symbols.find(text);
        return found != symbols.end() ? found->second : Add(text);
    }

    t_symbol* Empty() const { return empty; }

    t_symbol* MakeUnique() {
        const std::lock_guard lock(mutex);
        char text[32];
        do {
            std::snprintf(text, sizeof(text), "u%09lu", ++lastUnique);
        } while (symbols.contains(text));
        return Add(text);
    }

private:
    struct Entry {
        std::string text;
        t_symbol symbol;
    };

    t_symbol* Add(std::string_view text) {
        Entry& entry = entries.emplace_back(Entry{std::string(text), {}});
        try {
            symbols.emplace(entry.text, &entry.symbol);
        } catch (...) {
            entries.pop_back();
            throw;
        }
        entry.symbol.s_name = entry.text.data();
        return &entry.symbol;
    }

    std::mutex mutex;
    std::deque<Entry> entries;  // a deque: what was handed out never moves
    std::unordered_map<std::string_view, t_symbol*> symbols;
    unsigned long lastUnique = 0;
    t_symbol* const empty = Add("");
};

/// Never destroyed, since objects that are freed at the program's very end still use symbols.
SymbolTable& Symbols() {
    static SymbolTable& table = *new SymbolTable;
    return table;
}

}  // namespace
}  // namespace velmohost

extern "C" {

// Nobody looks whether there is a symbol: without memory for a new one it is the empty one.
t_symbol* gensym(const char* s) try {
    return velmohost::Symbols().Intern(s != nullptr ? s : "");
} catch (const std::bad_alloc&) {
    velmohost::OutOfMemory{};
    return velmohost::Symbols().Empty();
}

t_symbol* gensym_tr(const char* s) { return gensym(s); }

char* str_tr(const char* s) { return gensym(s)->s_name; }

t_symbol* symbol_unique(void) try { return velmohost::Symbols().MakeUnique(); } catch (const std::bad_alloc&) {
    return velmohost::OutOfMemory();
}

t_max_err symbolarray_sort(long ac, t_symbol** av) {
    if (ac < 0 || (ac > 0 && av == nullptr)) return MAX_ERR_INVALID_PTR;
    std::sort(av, av + ac, [](const t_symbol* a, const t_symbol* b) { return std::strcmp(a->s_name, b->s_name) < 0; });
    return MAX_ERR_NONE;
}

}  // extern "C"
