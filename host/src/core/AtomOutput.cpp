#include "core/AtomOutput.h"

#include <algorithm>
#include <new>

namespace velmohost {

t_max_err GiveAtoms(const std::vector<t_atom>& atoms, long* ac, t_atom** av) {
    if (ac == nullptr || av == nullptr) return MAX_ERR_INVALID_PTR;
    const bool ownMemory = *ac > 0 && *av != nullptr;
    long count = static_cast<long>(atoms.size());
    if (ownMemory) {
        count = std::min(count, *ac);
    } else {
        *av = atoms.empty() ? nullptr : reinterpret_cast<t_atom*>(sysmem_newptr(atoms.size() * sizeof(t_atom)));
        if (*av == nullptr && count > 0) throw std::bad_alloc();
    }
    std::copy_n(atoms.begin(), count, *av);
    *ac = count;
    return MAX_ERR_NONE;
}

}  // namespace velmohost
