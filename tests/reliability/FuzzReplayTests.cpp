// Replays the fuzz starting inputs and every saved fuzz finding through the fuzz harnesses, so that the
// properties the fuzzers check are checked by every build, also without clang, and a fixed finding stays
// fixed. Each input runs in a child process: a broken property aborts it, and the failure names the file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/harness/Base36.hpp"
#include "fuzz/harness/Base64Decoding.hpp"
#include "fuzz/harness/Components.hpp"
#include "fuzz/harness/CredentialsDocument.hpp"
#include "fuzz/harness/CsvFile.hpp"
#include "fuzz/harness/CsvLine.hpp"
#include "fuzz/harness/DecodeText.hpp"
#include "fuzz/harness/Decryption.hpp"
#include "fuzz/harness/Entities.hpp"
#include "fuzz/harness/HexReading.hpp"
#include "fuzz/harness/NumberReading.hpp"
#include "fuzz/harness/NumberValidation.hpp"
#include "fuzz/harness/ObjectGraphStore.hpp"
#include "fuzz/harness/PathExtension.hpp"
#include "fuzz/harness/PlatformBase64.hpp"
#include "fuzz/harness/PropertyListReading.hpp"
#include "fuzz/harness/Rfc3339.hpp"
#include "fuzz/harness/SettingsLoader.hpp"
#include "fuzz/harness/TextUtf8.hpp"
#include "fuzz/harness/WindowsPaths.hpp"
#include "fuzz/harness/XmlDocument.hpp"
#include "fuzz/harness/XmlParser.hpp"

namespace {

namespace fs = std::filesystem;

struct Target {
    const char* name;
    void (*harness)(const std::uint8_t*, std::size_t);
};

const Target kTargets[] = {
    {"base36", bv::fuzz::base36},
    {"base64", bv::fuzz::base64Decoding},
    {"components", bv::fuzz::components},
    {"credentials_document", bv::fuzz::credentialsDocument},
    {"csv_file", bv::fuzz::csvFile},
    {"csv_line", bv::fuzz::csvLine},
    {"decode_text", bv::fuzz::decodeText},
    {"decryption", bv::fuzz::decryption},
    {"entities", bv::fuzz::entities},
    {"hex", bv::fuzz::hexReading},
    {"number_reading", bv::fuzz::numberReading},
    {"number_validation", bv::fuzz::numberValidation},
    {"object_graph_store", bv::fuzz::objectGraphStore},
    {"path_extension", bv::fuzz::pathExtension},
    {"platform_base64", bv::fuzz::platformBase64},
    {"property_list", bv::fuzz::propertyListReading},
    {"settings_loader", bv::fuzz::settingsLoader},
    {"rfc3339", bv::fuzz::rfc3339},
    {"text_utf8", bv::fuzz::textUtf8},
    {"windows_paths", bv::fuzz::windowsPaths},
    {"xml_document", bv::fuzz::xmlDocument},
    {"xml_parser", bv::fuzz::xmlParser},
};

std::vector<fs::path> inputsOf(const std::string& target) {
    std::vector<fs::path> inputs;
    for (const char* folder : {"corpus", "regressions"}) {
        const fs::path path = fs::path(BV_SOURCE_DIR) / "tests" / "fuzz" / folder / target;
        if (!fs::is_directory(path)) continue;
        for (const auto& entry : fs::directory_iterator(path))
            if (entry.is_regular_file()) inputs.push_back(entry.path());
    }
    return inputs;
}

std::vector<std::uint8_t> bytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class FuzzReplay : public testing::TestWithParam<Target> {};

TEST_P(FuzzReplay, SeedsAndSavedFindingsKeepEveryProperty) {
    const Target& target = GetParam();
    const std::vector<fs::path> inputs = inputsOf(target.name);
    EXPECT_FALSE(inputs.empty()) << "no starting inputs for " << target.name;
    for (const fs::path& input : inputs) {
        SCOPED_TRACE(input.string());
        const std::vector<std::uint8_t> bytes = bytesOf(input);
        EXPECT_EXIT(
            {
                target.harness(bytes.data(), bytes.size());
                std::exit(0);
            },
            testing::ExitedWithCode(0), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplay, testing::ValuesIn(kTargets),
                         [](const testing::TestParamInfo<Target>& info) {
                             return std::string(info.param.name);
                         });

}  // namespace
