// The SDK only declares these two, for every plug-in to define; the headers of host/include define them by themselves.
#include "velmomax_api.h"

t_common_symbols_table* _common_symbols = nullptr;

void common_symbols_init(void) { _common_symbols = common_symbols_gettable(); }
