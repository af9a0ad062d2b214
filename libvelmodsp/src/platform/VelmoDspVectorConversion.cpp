#include "platform/VelmoDspVectorConversion.h"

#if defined(__APPLE__)
#include <Accelerate/Accelerate.h>
#endif

namespace velmodsp {

#if defined(__APPLE__)

void VectorConversion::DoubleToFloat(float* out, const double* in, unsigned long n) noexcept {
    vDSP_vdpsp(in, 1, out, 1, n);
}

void VectorConversion::FloatToDouble(double* out, const float* in, unsigned long n) noexcept {
    vDSP_vspdp(in, 1, out, 1, n);
}

#else

void VectorConversion::DoubleToFloat(float* out, const double* in, unsigned long n) noexcept {
    for (unsigned long i = 0; i < n; ++i) out[i] = static_cast<float>(in[i]);
}

void VectorConversion::FloatToDouble(double* out, const float* in, unsigned long n) noexcept {
    for (unsigned long i = 0; i < n; ++i) out[i] = static_cast<double>(in[i]);
}

#endif

}  // namespace velmodsp
