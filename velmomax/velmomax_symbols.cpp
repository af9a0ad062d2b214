#include "velmomax_symbols.h"

namespace velmomax {

t_symbol** velmomax_common_symbols = nullptr;

t_symbol** velmomax_common_symbols_gettable() noexcept {
    static std::array<t_symbol*, commonSymbolNames.size()> table;
    for (std::size_t slot = 0; slot < table.size(); ++slot) table[slot] = gensym(commonSymbolNames[slot].data());
    return table.data();
}

void InitCommonSymbols() noexcept {
    common_symbols_init();
    velmomax_common_symbols = velmomax_common_symbols_gettable();
}

}  // namespace velmomax
