#include "platform/VelmoDspVectorConversion.h"

#include <Accelerate/Accelerate.h>

namespace velmodsp {

void VectorConversion::DoubleToFloat(float* out, const double* in, unsigned long n) noexcept {
    vDSP_vdpsp(in, 1, out, 1, n);
}

void VectorConversion::FloatToDouble(double* out, const float* in, unsigned long n) noexcept {
    vDSP_vspdp(in, 1, out, 1, n);
}

}  // namespace velmodsp
