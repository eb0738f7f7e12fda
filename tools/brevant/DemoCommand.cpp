// brevant demo: the library's main roads end to end on the bundled samples. It imports a class list
// (reporting its malformed line by number), reads a session's questions from XML, names each question's
// family from its type code, tallies both questions' answers with their charts, and writes the tallies
// as CSV into a temporary folder and reads them back. Nothing is written outside that folder, which is
// removed at the end; no network is needed.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>

#include "BrevantCocoaExtensions/documents/BVNSXMLElement.hpp"
#include "BrevantCocoaExtensions/platform/FileWriting.hpp"
#include "BrevantCocoaExtensions/platform/NumberReading.hpp"
#include "BrevantCocoaExtensions/platform/XMLNode.hpp"
#include "BrevantCocoaExtensions/responses/QuestionCodes.hpp"
#include "BrevantCocoaExtensions/text/BVNSMutableString.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"
#include "Command.hpp"
#include "CsvInput.hpp"
#include "QuestionFamilies.hpp"
#include "Tally.hpp"

namespace brevant {

namespace {

namespace fs = std::filesystem;

struct Question {
    std::string column;
    std::int32_t typeCode = 0;
    std::string prompt;
};

// The bundled samples: next to the sources in a build tree, else where `cmake --install` put them.
fs::path defaultSamplesFolder() {
    std::error_code code;
    if (fs::is_directory(BV_SAMPLES_DIR, code)) return BV_SAMPLES_DIR;
    return BV_INSTALLED_SAMPLES_DIR;
}

// A fresh folder under the system's temporary folder, removed when the demo ends.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (fs::temp_directory_path() / "brevant-demo-XXXXXX").string();
        if (::mkdtemp(pattern.data()) != nullptr) path_ = pattern;
    }
    ~TemporaryFolder() {
        std::error_code code;
        if (!path_.empty()) fs::remove_all(path_, code);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    [[nodiscard]] const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

std::string plural(const char* word, std::size_t count) {
    return std::to_string(count) + " " +
           bv::BVNSString::stringByAppendingPluralBasedOnCount(bv::Text(word),
                                                               static_cast<std::int64_t>(count))
               .toUtf8();
}

bool importClassList(const fs::path& file, std::string* out, std::string* error) {
    std::map<std::string, std::size_t> perClass;
    std::size_t students = 0;
    CsvReadReport report;
    auto count = [&](const bv::CSVReader& reader, const std::vector<bv::Text>&) {
        ++students;
        if (auto group = reader.fieldValueForName(bv::Text("Class"))) ++perClass[group->toUtf8()];
    };
    CsvReadOptions options;
    options.header = true;
    if (!forEachCsvRecord(file.string(), options, nullptr, count, error, &report)) return false;
    std::string classes;
    for (const auto& [name, size] : perClass)
        classes += (classes.empty() ? "" : ", ") + name + ": " + std::to_string(size);
    *out += "   " + plural("student", students) + " imported (" + classes + ")\n";
    for (std::uint64_t line : report.malformedLines)
        *out += "   line " + std::to_string(line) + " is malformed and was skipped (reported above)\n";
    return true;
}

bool readQuestions(const fs::path& file, std::string* title, std::vector<Question>* questions,
                   std::string* error) {
    bv::Error parseError;
    auto document = bv::XMLDocument::parseFile(file.string(), bv::XMLNodeOptionsNone, &parseError);
    if (!document || !document->rootElement()) {
        *error = file.string() + ": " + parseError.localizedDescription.toUtf8();
        return false;
    }
    const bv::XMLElement& session = *document->rootElement();
    *title = bv::BVNSXMLElement::stringValueOfAttributeForName(session, bv::Text("title"))
                 .value_or(bv::Text())
                 .toUtf8();
    for (const auto& element :
         bv::BVNSXMLElement::childElementsNamedRecursiveSearch(session, bv::Text("question"), false)) {
        Question question;
        question.column = bv::BVNSXMLElement::stringValueOfAttributeForName(*element, bv::Text("column"))
                              .value_or(bv::Text())
                              .toUtf8();
        auto child = [&](const char* name) {
            return bv::BVNSXMLElement::stringValueOfFirstChildElementNamedRecursiveSearch(
                       *element, bv::Text(name), false)
                .value_or(bv::Text());
        };
        question.typeCode = bv::intValue(child("typeCode"));
        question.prompt = bv::BVNSString::trimmedString(child("prompt")).toUtf8();
        questions->push_back(std::move(question));
    }
    return true;
}

// Free-text answers are tallied ignoring case; answers picked from a list are matched exactly.
bool tallyQuestion(const Question& question, const fs::path& responses, std::size_t number,
                   TallyResult* result, std::string* out, std::string* error) {
    bool freeText = bv::IsQuestionCodeFillInTheBlank(question.typeCode);
    TallyOptions options;
    options.file = responses.string();
    options.column = question.column;
    options.ignoreCase = freeText;
    if (!tallyAnswers(options, result, error)) return false;
    *out += "\nQuestion " + std::to_string(number) + " (type code " + std::to_string(question.typeCode) +
            ": " + questionFamilies(question.typeCode) + ", " +
            (bv::IsQuestionCodeScorable(question.typeCode) ? "scorable" : "not scorable") + ")\n";
    *out += "   " + question.prompt + "\n";
    *out += renderTallyText(*result, options, outputWidth());
    return true;
}

// Writes every question's tally as CSV (each field quoted by appendCSV), then reads it back.
bool saveAndReload(const fs::path& folder, const std::vector<Question>& questions,
                   const std::vector<TallyResult>& results, std::string* out, std::string* error) {
    bv::Text csv;
    for (const char* heading : {"Question", "Rank", "Answer", "Count"})
        bv::BVNSMutableString::appendCSV(csv, bv::Text(heading));
    std::string document = csv.toUtf8() + "\n";
    for (std::size_t q = 0; q < questions.size(); ++q) {
        for (const ChartRow& row : results[q].rows) {
            bv::Text line;
            for (const std::string& field :
                 {questions[q].column, row.rank, row.answer, std::to_string(row.count)})
                bv::BVNSMutableString::appendCSV(line, bv::Text(field));
            document += line.toUtf8() + "\n";
        }
    }
    fs::path file = folder / "tallies.csv";
    bv::Error writeError;
    if (!bv::writeBytesToFile(file.string(), document.data(), document.size(), true, &writeError)) {
        *error = file.string() + ": " + writeError.failureReason.toUtf8();
        return false;
    }
    std::size_t rows = 0;
    CsvReadReport report;
    CsvReadOptions options;
    options.header = true;
    if (!forEachCsvRecord(
            file.string(), options, nullptr,
            [&](const bv::CSVReader&, const std::vector<bv::Text>&) { ++rows; }, error, &report))
        return false;
    if (report.failed()) {
        *error = file.string() + ": the tallies did not read back cleanly";
        return false;
    }
    *out += "   Saved the tallies to " + file.string() +
            " (every field quoted) and read them back: " + plural("row", rows) + ".\n";
    return true;
}

// Writes what the demo has to say so far, so that messages on standard error appear in their place.
bool flush(std::string* out) {
    bool written = writeOutput(*out) && flushOutput();
    out->clear();
    return written;
}

int fail(const std::string& error) {
    printError("demo: " + error);
    return kExitFailure;
}

int runDemo(const fs::path& samples) {
    TemporaryFolder scratch;
    if (scratch.path().empty()) return fail("cannot create a temporary folder");
    std::string out = "Brevant demo on the samples in " + samples.string() +
                      "\n\n1. Importing the class list " + (samples / "class-list.csv").string() + "\n";
    if (!flush(&out)) return kExitSuccess;  // the reader went away: end quietly
    std::string error, title;
    std::vector<Question> questions;
    if (!importClassList(samples / "class-list.csv", &out, &error) ||
        !readQuestions(samples / "questions.xml", &title, &questions, &error))
        return fail(error);
    out += "\n2. Session \"" + title + "\": " + plural("question", questions.size()) + ", answers in " +
           (samples / "responses.csv").string() + "\n";
    std::vector<TallyResult> results(questions.size());
    for (std::size_t i = 0; i < questions.size(); ++i) {
        if (!tallyQuestion(questions[i], samples / "responses.csv", i + 1, &results[i], &out, &error))
            return fail(error);
    }
    out += "\n3. Export\n";
    if (!saveAndReload(scratch.path(), questions, results, &out, &error)) return fail(error);
    flush(&out);
    return kExitSuccess;
}

void installDemo(CLI::App& app, int* exitCode) {
    auto samples = std::make_shared<std::string>(defaultSamplesFolder().string());
    CLI::App* command =
        app.add_subcommand("demo", "Import a class list, tally two questions and chart them (samples)");
    command
        ->add_option("--samples", *samples, "The folder of class-list.csv, questions.xml and responses.csv")
        ->capture_default_str();
    command->footer("Exit status: 0 success, 1 a sample could not be read or written.");
    command->callback([samples, exitCode] { *exitCode = runDemo(*samples); });
}

const RegisterCommand kDemo("demo", installDemo);

}  // namespace

}  // namespace brevant
