// Replays the image fuzz target's starting inputs and saved findings through its harness, so every build
// checks its properties (a broken one aborts this program, naming the property).
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/harness/ImageDecoding.hpp"

TEST(ImageFuzzReplay, StartingInputsAndFindingsKeepTheirProperties) {
    namespace fs = std::filesystem;
    std::size_t replayed = 0;
    for (const char* folder : {"corpus/image", "regressions/image"}) {
        const fs::path path = fs::path(BV_SOURCE_DIR) / "tests/fuzz" / folder;
        if (!fs::is_directory(path)) continue;
        for (const auto& entry : fs::directory_iterator(path)) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            bv::fuzz::imageDecoding(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    EXPECT_GE(replayed, 8u);
}
