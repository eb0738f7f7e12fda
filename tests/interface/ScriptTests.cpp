// Brevant Script: what scripts say and answer, the exact error descriptions by line, and real speech
// synthesized into a WAVE file.
#include <gtest/gtest.h>

#include "BrevantCocoaExtensions/interface/Script.hpp"
#include "fuzz/harness/ScriptSource.hpp"
#include "interface/InterfaceTestSupport.hpp"

using bv::Text;

namespace {
class ScriptTest : public bvtest::InterfaceTest {};

struct Outcome {
    std::vector<std::string> spoken;
    std::string answer;  // the answer's description, or the error's
};

Outcome run(const char* source, std::vector<std::string>& spoken) {
    spoken.clear();
    bv::Error error;
    const auto answer = bv::Script(Text(source)).executeAndReturnError(&error);
    return {spoken, answer ? (answer->isNull() ? std::string("null") : answer->description().toUtf8())
                           : error.localizedDescription.toUtf8()};
}
}  // namespace

TEST_F(ScriptTest, SpeaksAnswersAndReportsErrorsByLine) {
    const std::string e = "Brevant Script error on line ";
    const struct {
        const char* source;
        std::vector<std::string> spoken;
        std::string answer;
    } cases[] = {
        {"say \"Hello\"", {"Hello"}, "null"},
        {"-- a comment\n# another\n\n  say \"a\\\"b\\\\c\\nd\"  -- trailing\n", {"a\"b\\c\nd"}, "null"},
        {"set n to 3\r\nreturn \"Q\" & n & \" \" & true", {}, "Q3 true"},
        {"say \"x\"\nreturn 42\nsay \"never\"", {"x"}, "42"},
        {"return", {}, "null"},
        {"say \"open", {}, e + "1: the text is not closed on its line"},
        {"say \"a\" say \"b\"", {}, e + "1: expected the end of the line but found \"say\""},
        {"say \"a\"\ndo shell script \"ls\"", {}, e + "2: unknown command \"do\""},
        {"say \"\\q\"", {}, e + "1: unknown escape \"\\q\" in a text"},
        {"say $(touch x)", {}, e + "1: unexpected character \"$\""},
        {"set to to 1", {}, e + "1: expected a variable name but found \"to\""},
        {"say", {}, e + "1: expected a value but found the end of the script"},
        {"return 99999999999999999999", {}, e + "1: the number 99999999999999999999 is too large"},
        {"say \"before\"\n\nreturn nobody", {"before"}, e + "3: the variable nobody is not defined"},
        {"error \"stop \" & 1", {}, e + "1: stop 1"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = run(c.source, spoken_);
        EXPECT_EQ(outcome.spoken, c.spoken) << c.source;
        EXPECT_EQ(outcome.answer, c.answer) << c.source;
    }
}

TEST_F(ScriptTest, FailedSpeechIsARunError) {
    speaks_ = false;
    EXPECT_EQ(run("\nsay \"Hi\"", spoken_).answer, "Brevant Script error on line 2: speech is unavailable");
}

TEST_F(ScriptTest, EspeakSynthesizesAudibleWaveFile) {
    bv::Error error;
    ASSERT_TRUE(
        bv::Speech::writeWaveFile(Text("Question three. One half plus one quarter."), path("q.wav"), &error))
        << error.localizedDescription;
    const std::string wave = contents("q.wav");
    ASSERT_GT(wave.size(), 44u + 8000u);  // header and at least a fraction of a second of speech
    EXPECT_EQ(wave.substr(0, 4), "RIFF");
    EXPECT_EQ(wave.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(wave.substr(36, 4), "data");
    std::size_t loud = 0;
    for (std::size_t at = 44; at + 1 < wave.size(); at += 2) {
        const auto sample = static_cast<std::int16_t>(static_cast<unsigned char>(wave[at]) |
                                                      (static_cast<unsigned char>(wave[at + 1]) << 8));
        if (sample > 1000 || sample < -1000) ++loud;
    }
    EXPECT_GT(loud, 1000u);  // not silence

    // Reading aloud (which fails without a sound device) leaves nothing behind for the next synthesis.
    const auto before = bv::Speech::synthesize(Text("hello"));
    ASSERT_TRUE(before);
    (void)bv::Speech::speakAloud(Text("hello"));
    const auto after = bv::Speech::synthesize(Text("hello"));
    ASSERT_TRUE(after);
    EXPECT_LT(after->samples.size(), before->samples.size() * 3 / 2);
}

// The fuzz target's starting inputs and saved findings keep the harness's properties in every build.
TEST_F(ScriptTest, FuzzInputsKeepTheirProperties) {
    std::size_t replayed = 0;
    for (const char* folder : {"corpus/script", "regressions/script"}) {
        const std::filesystem::path inputs = std::filesystem::path(BV_SOURCE_DIR) / "tests/fuzz" / folder;
        if (!std::filesystem::is_directory(inputs)) continue;
        for (const auto& entry : std::filesystem::directory_iterator(inputs)) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), {}};
            bv::fuzz::scriptSource(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    EXPECT_GE(replayed, 5u);
}
