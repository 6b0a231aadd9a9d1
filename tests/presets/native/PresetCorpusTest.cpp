// What is read from the preset files of the fuzzer's corpus.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

#include "presets/PresetReading.h"

namespace {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

TEST(PresetCorpus, IsReadAsExpected) {
    const fs::path folder = fs::path(SOURCE_FOLDER) / "tests" / "fuzz";
    std::string read;
    for (const fs::path& path :
         std::set<fs::path>(fs::directory_iterator(folder / "corpus" / "PresetFile"), {}))
        read += path.filename().string() + "\n" + support::ReadInAllWays(BytesOf(path)) + "\n";
    EXPECT_EQ(read, BytesOf(folder / "expected.txt"));
}

}  // namespace
