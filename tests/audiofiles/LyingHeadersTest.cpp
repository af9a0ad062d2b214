// Headers that are damaged in every byte, and files that end anywhere: whatever they claim, reading ends, stays within
// what the file holds and throws nothing but the library's exception.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>

#include "audiofiles/FileBytes.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFile.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace {
std::size_t largestAllocation = 0;
}

// Not inlined, or the compiler takes the pair for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    largestAllocation = std::max(largestAllocation, size);
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace velmodsp {
namespace {

/// A table of channel pointers for the 65535 channels that a header can claim, and no more.
constexpr std::size_t LargestAllocationAllowed = 65536 * sizeof(void*);

void ReadHereAndThere(AudioFileReader& reader) {
    AudioBuffer buffer(4, 64, true);
    const unsigned long long length = reader.GetLengthInSamples();
    EXPECT_LE(reader.GetNumStoredSamples(), length);
    for (unsigned long long start : {0ull, length - 1, length, length / 2, ~0ull}) {
        buffer.Fill(std::nanf(""));
        const unsigned int last = reader.GetNumChannels() - 1;
        ASSERT_TRUE(reader.ReadSamples(buffer, 3, 0, 64, last, start));
        ASSERT_EQ(reader.ReadSamples(buffer, 0, 64, start), reader.GetNumChannels() <= 4);
        // The last channel went to channel 3; integers lie within -1 to 1, and nothing stays uninitialised.
        for (unsigned long i = 0; i < 64 && !reader.UsesFloatingPointData(); ++i)
            ASSERT_LE(std::abs(buffer.GetChannel(3)[i]), 1.0f);
    }
}

void OpenAndRead(const std::string& path, const Bytes& bytes) {
    WriteBytes(path, bytes);
    largestAllocation = 0;
    try {
        ReadHereAndThere(*AudioFileReader::CreateReaderFor(File(String(path))));
    } catch (const Exception&) {
        // Not a valid file: that is an answer too.
    }
    EXPECT_LE(largestAllocation, LargestAllocationAllowed);
}

void DamageEveryByte(const Bytes& header, const Bytes& rest) {
    const TempFolder folder;
    const std::string path = folder / "sound";
    testing::internal::CaptureStderr();  // every refused file is logged
    for (std::size_t i = 4; i < header.size(); ++i) {
        for (int value : {0x00, 0x7F, 0x80, 0xFF, header[i] + 1}) {
            SCOPED_TRACE(testing::Message() << "byte " << i << " is " << value);
            Bytes bytes = header + rest;
            bytes[i] = static_cast<unsigned char>(value);
            OpenAndRead(path, bytes);
        }
        SCOPED_TRACE(testing::Message() << "cut after " << i << " bytes");
        OpenAndRead(path, Bytes(header.begin(), header.begin() + static_cast<std::ptrdiff_t>(i)));
    }
    testing::internal::GetCapturedStderr();
}

const Bytes EightBytes = {1, 2, 3, 4, 5, 6, 7, 8};

TEST(LyingHeaders, Wav) {
    DamageEveryByte(Text("RIFF") + Le32(84) + Text("WAVE") + Text("fmt ") + Le32(40) + Le16(0xFFFE) + Le16(2) +
                        Le32(48000) + Le32(192000) + Le16(4) + Le16(16) + Le16(22) + Le16(16) + Le32(3) + Le16(1) +
                        SubFormatTail + RiffChunk("LIST", {0, 0}) + Text("data") + Le32(8),
                    EightBytes);
}

TEST(LyingHeaders, Rf64) {
    DamageEveryByte(Text("RF64") + Le32(0xFFFFFFFF) + Text("WAVE") + Text("ds64") + Le32(28) + Le64(80) + Le64(8) +
                        Bytes(12) + WavFormat(1, 1, 8000, 8) + Text("data") + Le32(0xFFFFFFFF),
                    EightBytes);
}

TEST(LyingHeaders, Aiff) {
    DamageEveryByte(Text("FORM") + Be32(78) + Text("AIFC") + AiffChunk("FVER", Be32(0xA2805140)) +
                        AiffCommon(2, 2, 16, "sowt") + Text("SSND") + Be32(16) + Be32(0) + Be32(0),
                    EightBytes);
}

}  // namespace
}  // namespace velmodsp
