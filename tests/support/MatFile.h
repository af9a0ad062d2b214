#pragma once

#include <matio.h>

#include <memory>
#include <string>
#include <vector>

/// One variable of a Matlab data file.
struct MatVariable {
    std::string name;
    std::string type;  // "single", "double" or "other"
    std::vector<std::size_t> size;
    std::string bytes;  // the elements, column by column

    bool operator==(const MatVariable&) const = default;
};

inline MatVariable ToMatVariable(const matvar_t& variable) {
    const auto is = [&](matio_classes type, matio_types data) {
        return variable.class_type == type && variable.data_type == data && !variable.isComplex;
    };
    const std::string type = is(MAT_C_SINGLE, MAT_T_SINGLE)   ? "single"
                             : is(MAT_C_DOUBLE, MAT_T_DOUBLE) ? "double"
                                                              : "other";
    return {variable.name,
            type,
            {variable.dims, variable.dims + variable.rank},
            {static_cast<const char*>(variable.data), variable.data == nullptr ? 0 : variable.nbytes}};
}

/// The variables in the order of the file, as libmatio reads them; empty when it cannot open the file.
inline std::vector<MatVariable> ReadMatFile(const std::string& path) {
    const std::unique_ptr<mat_t, decltype(&Mat_Close)> file(Mat_Open(path.c_str(), MAT_ACC_RDONLY), &Mat_Close);
    std::vector<MatVariable> variables;
    while (file != nullptr) {
        const std::unique_ptr<matvar_t, decltype(&Mat_VarFree)> next(Mat_VarReadNext(file.get()), &Mat_VarFree);
        if (next == nullptr) break;
        variables.push_back(ToMatVariable(*next));
    }
    return variables;
}
