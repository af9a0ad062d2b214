#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmodsp {

/// A file header of `Size` bytes, put together field by field in the order of the file. What is never written is 0.
template <std::size_t Size>
class HeaderBytes {
public:
    const std::array<unsigned char, Size>& Bytes() const { return bytes; }

    /// @param id four characters, such as "RIFF"
    void Id(const char (&id)[5]) {
        for (int i = 0; i < 4; ++i) Put(static_cast<unsigned char>(id[i]));
    }
    void Little16(std::uint64_t value) { PutLittle(value, 2); }
    void Little32(std::uint64_t value) { PutLittle(value, 4); }
    void Little64(std::uint64_t value) { PutLittle(value, 8); }
    void Big16(std::uint64_t value) { PutBig(value, 2); }
    void Big32(std::uint64_t value) { PutBig(value, 4); }
    void Zeros(std::size_t count) { position += count; }
    template <std::size_t Count>
    void Copy(const std::array<unsigned char, Count>& source) {
        for (unsigned char byte : source) Put(byte);
    }

private:
    void Put(unsigned char byte) { bytes.at(position++) = byte; }
    void PutLittle(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) Put(static_cast<unsigned char>(value >> 8 * i));
    }
    void PutBig(std::uint64_t value, int count) {
        for (int i = count - 1; i >= 0; --i) Put(static_cast<unsigned char>(value >> 8 * i));
    }

    std::array<unsigned char, Size> bytes = {};
    std::size_t position = 0;
};

}  // namespace velmodsp
