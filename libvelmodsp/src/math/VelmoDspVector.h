#pragma once

#include <vector>

#include "utils/VelmoDspGuardedAllocation.h"

namespace velmodsp {

/// The library's growable array: a standard vector behind a class that others derive from.
///
/// Growth by its own functions throws what the standard vector throws; `ResizeVector` turns that into an `Exception`
/// that names the code which asked for the memory. Not for the audio thread, save element access and `Size`.
template <typename T>
class Vector {
public:
    // The standard containers' names, as generic code expects them.
    using value_type = T;
    using reference = typename std::vector<T>::reference;
    using const_reference = typename std::vector<T>::const_reference;
    using iterator = typename std::vector<T>::iterator;
    using const_iterator = typename std::vector<T>::const_iterator;

    Vector() = default;
    /// `n` elements, each value-initialised (numbers are 0).
    explicit Vector(unsigned long n) : elements(n) {}
    Vector(const Vector&) = default;
    Vector(Vector&&) noexcept = default;
    Vector& operator=(const Vector&) = default;
    Vector& operator=(Vector&&) noexcept = default;
    virtual ~Vector() = default;

    unsigned long Size() const { return static_cast<unsigned long>(elements.size()); }
    void PushBack(const T& element) { elements.push_back(element); }
    /// @param index below `Size()`; not checked
    reference operator[](unsigned long index) { return elements[index]; }
    const_reference operator[](unsigned long index) const { return elements[index]; }
    /// New elements are value-initialised.
    void Resize(unsigned long n) { elements.resize(n); }
    /// Destroys all elements and keeps the storage.
    void Clear() { elements.clear(); }

    auto Data() { return elements.data(); }
    auto Data() const { return elements.data(); }
    iterator begin() { return elements.begin(); }
    const_iterator begin() const { return elements.begin(); }
    iterator end() { return elements.end(); }
    const_iterator end() const { return elements.end(); }

private:
    std::vector<T> elements;
};

/// Grows or shrinks `vector` to `n` elements; new ones are value-initialised.
/// @throws Exception when that fails; the message names the function that called this one
template <typename T>
[[gnu::noinline]] void ResizeVector(Vector<T>& vector, unsigned long n) {
    GuardGrowth([&] { vector.Resize(n); });
}

}  // namespace velmodsp
