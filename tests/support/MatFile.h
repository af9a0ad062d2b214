#pragma once

#include <matio.h>

#include <memory>
#include <string>
#include <vector>

/// One variable of a Matlab data file. The bytes are those of the elements, column by column.
struct MatVariable {
    std::string name;
    matio_classes type;
    std::vector<std::size_t> size;
    std::string bytes;

    bool operator==(const MatVariable&) const = default;
};

/// The variables in the order of the file, as libmatio reads them; none when it cannot open the file.
inline std::vector<MatVariable> ReadMatFile(const std::string& path) {
    const std::unique_ptr<mat_t, decltype(&Mat_Close)> file(Mat_Open(path.c_str(), MAT_ACC_RDONLY), &Mat_Close);
    std::vector<MatVariable> variables;
    while (file != nullptr) {
        const std::unique_ptr<matvar_t, decltype(&Mat_VarFree)> next(Mat_VarReadNext(file.get()), &Mat_VarFree);
        if (next == nullptr) break;
        const std::string bytes(static_cast<const char*>(next->data), next->data == nullptr ? 0 : next->nbytes);
        variables.push_back({next->name, next->class_type, {next->dims, next->dims + next->rank}, bytes});
    }
    return variables;
}
