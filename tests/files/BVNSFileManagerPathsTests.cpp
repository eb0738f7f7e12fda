// BVNSFileManager's naming half on real folders: listing order, searches, names, repeated extensions and
// drive-letter paths, and the rebuilding of backslash-named entries into folders.
#include <algorithm>
#include <random>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/PathRules.hpp"
#include "files/FileTestSupport.hpp"
#include "fuzz/harness/PathExtension.hpp"

using namespace bvtest::names;

namespace {

class FileNames : public bvtest::FileTest {};

}  // namespace

TEST(PathRules, JoinAndSplitFollowThePathRules) {
    using namespace bv::PathRules;
    struct Case {
        const char* path;
        const char* component;
        const char* joined;
        const char* last;
        const char* extension;
        const char* withoutExtension;
    };
    const Case cases[] = {
        {"", "a.xml", "a.xml", "", "", ""},
        {"/", "a", "/a", "/", "", "/"},
        {"q//Quiz/", "/b//c/", "q/Quiz/b/c", "Quiz", "", "q//Quiz"},
        {"/q/Quiz.xml", "", "/q/Quiz.xml", "Quiz.xml", "xml", "/q/Quiz"},
        {"a.b/c.tar.gz", "d", "a.b/c.tar.gz/d", "c.tar.gz", "gz", "a.b/c.tar"},
        {"dir.d/noext", "x", "dir.d/noext/x", "noext", "", "dir.d/noext"},
        {".hidden", "x", ".hidden/x", ".hidden", "hidden", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(appendingPathComponent(Text(c.path), Text(c.component)), Text(c.joined));
        EXPECT_EQ(lastPathComponent(Text(c.path)), Text(c.last));
        EXPECT_EQ(pathExtension(Text(c.path)), Text(c.extension));
        EXPECT_EQ(deletingPathExtension(Text(c.path)), Text(c.withoutExtension));
    }
    EXPECT_EQ(deletingLastPathComponent(Text("/q/Quiz.xml")), Text("/q"));
    EXPECT_EQ(deletingLastPathComponent(Text("/q")), Text("/"));
    EXPECT_EQ(deletingLastPathComponent(Text("q")), Text(""));
    EXPECT_EQ(deletingLastPathComponent(Text("a//b/")), Text("a"));
}

TEST_F(FileNames, ListingsKeepTheSystemsOrder) {
    // Enough names that the system's order differs from any sorted one.
    for (int i = 0; i < 40; ++i)
        folder("list/d" + std::to_string(i * 7919 % 97));
    file("list/_first");
    file("list/f.txt");
    const Texts order = systemOrder("list");
    ASSERT_NE(order, [&] {
        Texts sorted = order;
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }()) << "the file system lists in sorted order; pick other names";

    EXPECT_EQ(fm::contentsOfDirectoryRemoveExtensions(at("list"), false), order);
    Texts folders;
    for (const Text& name : order) {
        if (name.view().starts_with(u"d"))
            folders.push_back(bv::PathRules::appendingPathComponent(at("list"), name));
    }
    EXPECT_EQ(fm::directoriesAtPath(manager(), at("list")), folders);
    EXPECT_EQ(fm::firstDirectoryFoundAtPath(manager(), at("list")), folders.front());
}

TEST_F(FileNames, FirstDirectorySkipsHiddenAndUnderscoreFoldersAndAnswersTheCallersSpelling) {
    folder("c/_Resources");
    folder("c/.hidden");
    file("c/Plain");
    EXPECT_EQ(fm::firstDirectoryFoundAtPath(manager(), at("c")), std::nullopt);
    folder("c/Media");
    EXPECT_EQ(fm::firstDirectoryFoundAtPath(manager(), at("c")), at("c/Media"));
    EXPECT_EQ(fm::firstDirectoryNamedFoundAtPath(manager(), Text("media"), at("c")), at("c/media"));
    EXPECT_EQ(fm::firstDirectoryNamedFoundAtPath(manager(), Text("plain"), at("c")), std::nullopt);  // a file
    EXPECT_EQ(fm::firstDirectoryFoundAtPath(manager(), at("missing")), std::nullopt);
}

TEST_F(FileNames, SearchesCompareNamesAndExtensionsCaseInsensitively) {
    file("s/quiz.xml");
    file("s/QUIZ.csv");
    file("s/Notes.XML");
    file("s/quizzes.xml");
    file("s/\xC3\x89T\xC3\x89.Xml");  // ÉTÉ.Xml
    const Texts order = systemOrder("s");
    auto inOrder = [&order](Texts wanted) {  // the wanted names in listing order
        Texts result;
        for (const Text& name : order) {
            if (std::find(wanted.begin(), wanted.end(), name) != wanted.end()) result.push_back(name);
        }
        return result;
    };
    const Texts xmlFiles = inOrder({"quiz.xml", "Notes.XML", "quizzes.xml", "\xC3\x89T\xC3\x89.Xml"});
    EXPECT_EQ(fm::fileNamesAtPathWithExtensionsRemoveExtensions(manager(), at("s"), {"xml", "XML"}, false),
              xmlFiles);
    EXPECT_EQ(fm::fileNamesAtPathWithExtensionRemoveExtensions(manager(), at("s"), "csv", true),
              Texts{"QUIZ"});
    EXPECT_EQ(fm::pathsWithExtensionInDirectory("CSV", at("s")), Texts{at("s/QUIZ.csv")});
    EXPECT_EQ(fm::pathForFileNameInDirectory("\xC3\xA9t\xC3\xA9.xml", at("s")),
              at("s/\xC3\xA9t\xC3\xA9.xml"));
    EXPECT_EQ(fm::pathForFileNameInDirectory("quiz", at("s")), std::nullopt);

    const Texts quizFiles = inOrder({"quiz.xml", "QUIZ.csv"});
    EXPECT_EQ(fm::findFilesNamedInDirectoryRemoveExtension("Quiz.txt", at("s"), false), quizFiles);
    Texts bareQuizNames;
    for (const Text& name : quizFiles)
        bareQuizNames.push_back(bv::PathRules::deletingPathExtension(name));
    EXPECT_EQ(fm::findFilesNamedInDirectoryRemoveExtension("Quiz", at("s"), true), bareQuizNames);
    EXPECT_EQ(fm::findFileNamedInDirectoryFullPath("quiz", at("s"), true),
              bv::PathRules::appendingPathComponent(at("s"), quizFiles.front()));
    EXPECT_EQ(fm::findFileNamedInDirectoryFullPath("quiz", at("s"), false), quizFiles.front());
    EXPECT_EQ(fm::findFileNamedInDirectoryRemoveExtension("nothing", at("s"), false), std::nullopt);
    EXPECT_EQ(fm::findFilesNamedInDirectoryFullPath("quiz", at("missing"), true), Texts{});
    EXPECT_EQ(fm::contentsOfDirectoryRemoveExtensions(at("missing"), false), std::nullopt);
    EXPECT_EQ(fm::contentsOfDirectoryRemoveExtensions(at("missing"), true), Texts{});
}

TEST_F(FileNames, CountsDatesAndExistingPaths) {
    file("n/one.txt");
    file("n/sub/two.txt");
    file("n/sub/three.txt");
    EXPECT_EQ(fm::numberOfFilesInDirectoryIncludingSubdirectories(at("n"), false), 3u);
    EXPECT_EQ(fm::numberOfFilesInDirectoryIncludingSubdirectories(at("n"), true), 4u);
    EXPECT_EQ(fm::numberOfFilesInDirectoryIncludingSubdirectories(at("missing"), true), 0u);

    fs::last_write_time(path("n/one.txt"), fs::file_time_type::clock::now() - std::chrono::hours(48));
    const std::optional<bv::Date> modified = fm::dateModifiedOfFileAtPath(at("n/one.txt"));
    ASSERT_TRUE(modified);
    EXPECT_NEAR(bv::Date::now().timeIntervalSince1970() - modified->timeIntervalSince1970(), 48 * 3600.0, 60);
    EXPECT_EQ(fm::dateModifiedOfFileAtPath(at("missing")), std::nullopt);
    EXPECT_EQ(fm::validPathsFromPaths({at("n/sub"), at("missing"), at("n/one.txt")}),
              (Texts{at("n/sub"), at("n/one.txt")}));
}

TEST(FileNameRules, NamesPathsAndIllegalCharacters) {
    EXPECT_EQ(fm::fileNamesFromPathsKeepPathExtension({"/q/Quiz.xml", "a/b.tar.gz", "plain"}, false),
              (Texts{"Quiz", "b.tar", "plain"}));
    EXPECT_EQ(fm::fileNamesFromPathsKeepPathExtension({"/q/Quiz.xml"}, true), Texts{"Quiz.xml"});
    EXPECT_EQ(fm::pathsFromStringsByAppendingPathExtensionInDirectory({"a", "b.c"}, "xml", "/q/"),
              (Texts{"/q/a.xml", "/q/b.c.xml"}));
    const std::pair<const char*, bool> names[] = {{"a:b", false}, {"a/b", false}, {"a\\b", true}, {"", true}};
    for (const auto& [name, valid] : names)
        EXPECT_EQ(fm::isValidFileName(name), valid) << name;
    EXPECT_EQ(fm::fileNameByReplacingIllegalCharactersWithChar("a/b:c\xC3\xA9", u'-'), Text("a-b-c\xC3\xA9"));
    EXPECT_EQ(fm::fileNameByReplacingIllegalCharactersWithChar("a:b", u'\u263A'),
              Text("a:b"));  // keeps the low byte
}

TEST(FileNameRules, ExcessExtensionsGoByTheIndexAfterTheEarlierCopy) {
    const std::pair<const char*, const char*> cases[] = {
        {"a.ZIP.zip", "a.ZIP"},
        {"a.zip", "a.zip"},
        {"a.zip.b.zip", "a.zip.zip"},
        {"quiz.zip.zip", "quiz.zip"},
        {"a.zip.zip.zip", "a.zip"},
        {"zip.zip", "zip"},
        {"/d.zip/q.zip.zip", "/d.zip/q.zip"},
        {"nodots", "nodots"},
        {"", ""},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(fm::pathByRemovingExcessOccurrencesOfPathExtensionFromPath("zip", path), Text(expected))
            << path;

    // Random mixes of few pieces against the rule done step by step.
    std::mt19937 random(7);
    const std::u16string pieces[] = {u"zip", u"ZIP", u"a", u"", u"zipx"};
    for (int round = 0; round < 2000; ++round) {
        std::u16string path;
        for (int n = static_cast<int>(random() % 7); n >= 0; --n)
            path += pieces[random() % 5] + (n ? u"." : u"");
        EXPECT_EQ(fm::pathByRemovingExcessOccurrencesOfPathExtensionFromPath("zip", Text(path)),
                  bv::fuzz::detail::slowExcessRemoval("zip", path))
            << Text(path);
    }
}

TEST_F(FileNames, DriveLetterPathsBecomeRelativePaths) {
    struct Case {
        const char* windows;
        const char* converted;
        const char* folder;
    };
    const Case cases[] = {
        {"C:\\Quiz\\Media\\a.png", "Quiz/Media/a.png", "Quiz/Media"},
        {"a.png", "a.png", ""},
        {"\\Quiz\\a.xml", "Quiz/a.xml", "Quiz"},
        {"d:Quiz\\\\Sub\\", "Quiz/Sub", "Quiz"},
        {"C:\\Mixed/Slash\\File.TXT", "Mixed/Slash/File.TXT", "Mixed/Slash"},
        {"", "", ""},
        {"C:", "", ""},
    };
    Texts windows, converted, folders;
    for (const Case& c : cases) {
        windows.emplace_back(c.windows);
        converted.emplace_back(c.converted);
        folders.emplace_back(c.folder);
    }
    EXPECT_EQ(fm::pathsConvertedFromMSWindowsPaths(windows), converted);
    EXPECT_EQ(fm::pathsConvertedFromMSWindowsPathsRemoveFileNames(windows, true), folders);
    EXPECT_EQ(fm::pathConvertedFromMSWindowsPathRemoveFileName("C:\\Quiz\\a.png", true), Text("Quiz"));
    EXPECT_EQ(fm::fileNamesConvertedFromMSWindowsPaths({"C:\\Quiz\\a.png", "b"}), (Texts{"a.png", "b"}));
    EXPECT_EQ(fm::fileNamesWithDriveCharacterRemovedForMSWindowsFileNames({"C:\\x", "ab", "::"}),
              (Texts{"\\x", "ab", ""}));
    EXPECT_THROW((void)fm::fileNameWithDriveCharacterRemovedForMSWindowsFileName("C"), bv::RangeException);
    EXPECT_TRUE(logged_.empty());

    EXPECT_EQ(fm::pathsConvertedFromMSWindowsPaths({"C:\\ok", Text(std::u16string(u"bad\0name", 8))}),
              std::nullopt);
    EXPECT_EQ(logged_,
              std::vector<std::string>{"Failed to convert paths from MS Windows format to Mac format."});
}

TEST_F(FileNames, BackslashNamesBecomeFoldersInsideTheGivenFolderOnly) {
    file("u/Media\\Images\\a.png", "png");
    file("u/Media\\b.txt", "b");
    file("u/plain.txt");
    file("u/..\\..\\climb.txt");
    file("u/C:\\sub\\..\\..\\climb2.txt");
    folder("outside");
    fs::create_directory_symlink(path("outside"), path("u/Link"));
    file("u/Link\\planted.txt");
    file("u/Taken\\c.txt", "new");
    file("u/Taken/c.txt", "old");

    fm::createDirectoryStructureForMSWindowsPathsInDirectoryDeleteMSWindowsPaths(manager(), at("u"), true);
    EXPECT_EQ(contents("u/Media/Images/a.png"), "png");
    EXPECT_EQ(contents("u/Media/b.txt"), "b");
    EXPECT_FALSE(exists("u/Media\\b.txt"));
    EXPECT_TRUE(exists("u/plain.txt"));
    EXPECT_TRUE(fs::is_empty(path("outside")));
    EXPECT_FALSE(exists("climb.txt") || exists("../climb.txt") || exists("climb2.txt"));
    EXPECT_TRUE(exists("u/..\\..\\climb.txt") && exists("u/Link\\planted.txt"));
    EXPECT_EQ(contents("u/Taken/c.txt"), "old");  // an existing target stays; the move fails and is logged
    EXPECT_TRUE(exists("u/Taken\\c.txt"));
    const std::string failedMove =
        "Failed to move " + path("u/Taken/c.txt") + " to " + path("u/Taken\\c.txt") + "\nFile exists";
    EXPECT_EQ(std::count(logged_.begin(), logged_.end(), failedMove), 1);
    EXPECT_EQ(std::count_if(logged_.begin(), logged_.end(),
                            [](const std::string& line) { return line.starts_with("Skipped "); }),
              3);

    file("v/Deep\\er\\x.txt", "x");
    fm::createDirectoryStructureForMSWindowsPathsInDirectoryDeleteMSWindowsPaths(manager(), at("v"), false);
    EXPECT_EQ(contents("v/Deep/er/x.txt"), "x");
    EXPECT_TRUE(exists("v/Deep\\er\\x.txt"));  // copied, not moved
}
