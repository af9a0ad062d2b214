#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "ext.h"
#include "ext_obex.h"

namespace {

TEST(Memory, KnowsItsSizeAndKeepsItsContentWhenItGrows) {
    t_ptr block = sysmem_newptr(3);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(sysmem_ptrsize(block), 3u);
    std::memcpy(block, "ab", 3);
    block = sysmem_resizeptrclear(block, 1000);
    EXPECT_EQ(sysmem_ptrsize(block), 1000u);
    EXPECT_STREQ(block, "ab");
    EXPECT_TRUE(std::all_of(block + 3, block + 1000, [](char c) { return c == 0; }));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0u);
    sysmem_freeptr(block);
    sysmem_freeptr(nullptr);
    EXPECT_EQ(sysmem_newptr(SIZE_MAX - 8), nullptr);
}

TEST(Memory, HandlesLeadToTheirBlockWhereverItLies) {
    t_handle handle = sysmem_newhandleclear(8);
    ASSERT_NE(handle, nullptr);
    (*handle)[0] = 'x';
    EXPECT_EQ(sysmem_resizehandle(handle, 1 << 20), 0);
    EXPECT_EQ((*handle)[0], 'x');
    EXPECT_EQ(sysmem_handlesize(handle), 1u << 20);
    EXPECT_EQ(sysmem_lockhandle(handle, 1), 0);
    EXPECT_EQ(sysmem_lockhandle(handle, 0), 1);
    sysmem_freehandle(handle);
}

TEST(Symbols, AreOnePointerPerTextOnEveryThread) {
    std::vector<std::vector<t_symbol*>> found(4, std::vector<t_symbol*>(500));
    std::vector<std::thread> threads;
    for (auto& symbols : found) {
        threads.emplace_back([&symbols] {
            for (std::size_t i = 0; i < symbols.size(); ++i) symbols[i] = gensym(("race" + std::to_string(i)).c_str());
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& symbols : found) EXPECT_EQ(symbols, found.front());
    EXPECT_STREQ(found[0][17]->s_name, "race17");
    EXPECT_NE(found[0][17], found[0][18]);
}

TEST(Symbols, UniqueOnesAreNew) {
    const std::string text = symbol_unique()->s_name;
    ASSERT_GT(text.size(), 1u);
    EXPECT_EQ(text[0], 'u');
    EXPECT_EQ(text.find_first_not_of("0123456789", 1), std::string::npos);
    // A name that a patch took before is passed over.
    t_symbol* const taken =
        gensym(("u" + std::to_string(1000000000 + std::stol(text.substr(1)) + 1).substr(1)).c_str());
    EXPECT_NE(symbol_unique(), taken);
}

TEST(CommonSymbols, LieInTheSlotsThatPlugInsReadAndAreNeverNull) {
    t_common_symbols_table* const table = common_symbols_gettable();
    EXPECT_EQ(table->version, 500);
    const auto at = [table](std::size_t byte) {
        return *reinterpret_cast<t_symbol**>(reinterpret_cast<char*>(table) + byte);
    };
    // Byte positions as found in compiled plug-ins.
    EXPECT_EQ(at(2680), gensym("dumpout"));
    EXPECT_EQ(at(7368), gensym(""));
    EXPECT_EQ(at(8 * 1043), gensym("#B"));
    EXPECT_EQ(at(8 * 1410), gensym("varname"));
    for (const t_symbol* symbol : table->slots) ASSERT_NE(symbol, nullptr);
    common_symbols_init();
    EXPECT_EQ(_sym_attr_modified, gensym("attr_modified"));
    EXPECT_EQ(common_symbols_gettable(), table);
}

TEST(Strings, AlwaysEndWithinTheBuffer) {
    char buffer[5] = "";
    EXPECT_STREQ(strncpy_zero(buffer, "abcdefg", sizeof(buffer)), "abcd");
    strncpy_zero(buffer, "ab", sizeof(buffer));
    EXPECT_STREQ(strncat_zero(buffer, "cdef", sizeof(buffer)), "abcd");
    EXPECT_EQ(snprintf_zero(buffer, sizeof(buffer), "%d", 1234567), 7);
    EXPECT_STREQ(buffer, "1234");
}

}  // namespace
