// brevant xml-values on hostile and odd input: refused entities and amplifications are errors, standard
// input, pipes and FIFOs are streams, control characters never reach the terminal (write failures are
// checked with every subcommand in ToolInputOutputTests).
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <tuple>

#include "support/ToolRun.hpp"

namespace {

namespace fs = std::filesystem;

using bvtest::ToolRun;

// A folder of its own under the temporary folder, removed with the object.
struct Scratch : bvtest::ToolFolder {
    Scratch() : bvtest::ToolFolder("brevant-xml-values") {
        std::filesystem::create_directories(root() / "quiz");
    }
    // Runs a shell pipeline in which "brevant" stands for the tool; standard error and the exit status of
    // the tool (the pipeline's first command unless `statusOf` says otherwise) are kept.
    ToolRun run(const std::string& pipeline, int statusOf = 0) const {
        return bvtest::ToolFolder::run(pipeline, "", statusOf);
    }
};

}  // namespace

TEST(BrevantXmlValues, RefusedEntitiesAndAmplificationsAreErrorsNamingTheFile) {
    Scratch scratch;
    const std::string secret = scratch.write("secret.txt", "SECRET");
    std::string references;
    for (int i = 0; i < 50000; ++i)
        references += "&b;";
    // Which entities are refused is the XML layer's rule (XMLNodeTests); here: how the tool reports them.
    const std::tuple<std::string, std::string> cases[] = {
        {"<!ENTITY s SYSTEM '../secret.txt'>", "only files in the document's folder"},
        {"<!ENTITY % p SYSTEM 'file://" + secret + "'> %p;", "only files in the document's folder"},
        {"<!ENTITY b '" + std::string(50 * 1024, 'x') + "'><!ENTITY s '" + references + "'>",
         "The entities would expand to more than"},
    };
    for (const auto& [declarations, reason] : cases) {
        const std::string file =
            scratch.write("quiz/q.xml", "<!DOCTYPE r [" + declarations + "]><r><a>1</a><b>&s;</b></r>");
        ToolRun run = scratch.run("brevant xml-values '" + file + "' a b");
        EXPECT_EQ(run.status, 1) << declarations.substr(0, 80);
        EXPECT_EQ(run.out, declarations.find('%') == std::string::npos ? "a\t1\n" : "")  // what came before
            << declarations.substr(0, 80);
        EXPECT_EQ(run.err.rfind("brevant: " + file + ": Line 1, column ", 0), 0u) << run.err;
        EXPECT_NE(run.err.find(reason), std::string::npos) << run.err;
        // From standard input the document has no folder: no external entity loads at all.
        run = scratch.run("brevant xml-values - a b < '" + file + "'");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err.rfind("brevant: standard input: ", 0), 0u) << run.err;
    }
}

TEST(BrevantXmlValues, StreamsFromPipesAndFifosAndEscapesControlCharacters) {
    Scratch scratch;
    // U+009B opens a terminal command like ESC [ does; DEL and carriage return are controls too.
    const std::string xml = "<r><a>x&#x9B;2J&#x7F;&#13;</a><b>caf\xC3\xA9</b></r>";
    const std::string expected = "a\tx\\u009B2J\\u007F\\r\nb\tcaf\xC3\xA9\n";
    const std::string file = scratch.write("doc.xml", xml);
    ASSERT_EQ(::mkfifo((scratch.root() / "fifo").c_str(), 0600), 0);
    const std::string fifo = (scratch.root() / "fifo").string();
    const std::string pipelines[] = {
        "brevant xml-values '" + file + "' a b",
        "cat '" + file + "' | brevant xml-values - a b",
        "cat '" + file + "' | brevant xml-values /dev/stdin a b",
        "(cat '" + file + "' > '" + fifo + "' &) ; brevant xml-values '" + fifo + "' a b",
    };
    for (const std::string& pipeline : pipelines) {
        ToolRun run = scratch.run(pipeline, pipeline.front() == 'c' ? 1 : 0);
        EXPECT_EQ(run.status, 0) << pipeline << "\n" << run.err;
        EXPECT_EQ(run.out, expected) << pipeline;
    }
}
