// BVNSFileManager's operations half on real folders: batch copy, move, rename and remove, attributes, the
// error callback, and zip archives packed and unpacked with the real tools.
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "BrevantCocoaExtensions/files/BVNSFileManager.hpp"
#include "BrevantCocoaExtensions/platform/ChildProcess.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "files/FileTestSupport.hpp"

using namespace bvtest::names;

namespace {

class FileOperations : public bvtest::FileTest {
  protected:
    void SetUp() override {
        FileTest::SetUp();
        // The suite's 7-Zip tool is looked for here; empty unless a test installs one.
        folder("support");
        ::setenv("BV_LOCAL_APPLICATION_SUPPORT", path("support").c_str(), 1);
    }
    void TearDown() override {
        ::unsetenv("BV_LOCAL_APPLICATION_SUPPORT");
        FileTest::TearDown();
    }

    [[nodiscard]] fs::perms permissions(const std::string& relative) const {
        return fs::symlink_status(root_ / relative).permissions();
    }

    // Zips one file of the folder "pack" under its relative name, then gives the entry another name of the
    // same length by rewriting the archive's bytes (zip itself refuses names like "../x").
    std::string archiveWithEntryNamed(const std::string& relative, const std::string& entryName) {
        EXPECT_EQ(relative.size(), entryName.size());
        file("pack/" + relative, "planted");
        const std::string archive = path("climb.zip");
        EXPECT_EQ(bv::ChildProcess::run("/usr/bin/zip", {"-q", archive, relative}, path("pack")), 0);
        std::string bytes = contents("climb.zip");
        for (std::size_t at = bytes.find(relative); at != std::string::npos; at = bytes.find(relative, at))
            bytes.replace(at, relative.size(), entryName);
        file("climb.zip", bytes);
        EXPECT_NE(bytes.find(entryName), std::string::npos);
        fs::remove_all(path("pack"));
        return archive;
    }
};

}  // namespace

TEST_F(FileOperations, CopyFiltersSkipsExistingTargetsAndLogsFailures) {
    file("src/a.xml", "a");
    file("src/b.png", "b");
    file("src/c.XML", "new c");
    file("dst/c.XML", "old c");
    const Texts sources{at("src/a.xml"), at("src/b.png"), at("src/c.XML")};
    EXPECT_TRUE(
        fm::copyPathsWithPathExtensionToDirectoryHandler(manager(), sources, "XML", at("dst"), nullptr));
    EXPECT_EQ(contents("dst/a.xml"), "a");
    EXPECT_FALSE(exists("dst/b.png"));
    EXPECT_EQ(contents("dst/c.XML"), "old c");  // not overwritten, and no failure

    EXPECT_TRUE(fm::copyPathToDirectoryOverwritingExistingFilesHandler(manager(), at("src/c.XML"), at("dst"),
                                                                       true, nullptr));
    EXPECT_EQ(contents("dst/c.XML"), "new c");
    EXPECT_TRUE(fm::copyPathToDirectoryOverwritingExistingFilesHandler(manager(), at("src/c.XML"), at("src"),
                                                                       true, nullptr));
    EXPECT_EQ(contents("src/c.XML"), "new c");  // copied onto itself: kept, not removed first
    EXPECT_TRUE(logged_.empty());

    EXPECT_FALSE(
        fm::copyPathsToDirectoryHandler(manager(), {at("src/a.xml"), at("src/missing")}, at("dst"), nullptr));
    EXPECT_FALSE(fm::copyPathToDirectoryHandler(manager(), at("src/a.xml"), at("nowhere"), nullptr));
    EXPECT_EQ(logged_, (std::vector<std::string>{
                           "Failed to copy path \"" + path("src/missing") + "\" to destination \"" +
                               path("dst/missing") + "\".",
                           "Failed to copy path \"" + path("src/a.xml") + "\" to destination \"" +
                               path("nowhere/a.xml") + "\".",
                       }));
    EXPECT_FALSE(exists("nowhere"));  // the target folder is not created
}

TEST_F(FileOperations, CopiesWholeFoldersWithLinksAndPermissions) {
    file("tree/top.txt", "top");
    file("tree/sub/deep.sh", "#!/bin/sh");
    fs::permissions(path("tree/sub/deep.sh"), fs::perms(0750));
    fs::create_symlink("sub/deep.sh", path("tree/link"));
    file("other/x.csv", "x");
    file("other/y.txt", "y");
    folder("dst");
    EXPECT_TRUE(fm::copyContentsOfDirectoryToDirectory(manager(), at("tree"), at("dst")));
    EXPECT_EQ(contents("dst/sub/deep.sh"), "#!/bin/sh");
    EXPECT_EQ(permissions("dst/sub/deep.sh"), fs::perms(0750));
    EXPECT_EQ(fs::read_symlink(path("dst/link")), "sub/deep.sh");
    EXPECT_FALSE(
        fm::copyPathToDirectoryHandler(manager(), at("tree"), at("tree/sub"), nullptr));  // into itself
    EXPECT_FALSE(exists("tree/sub/tree"));
    EXPECT_TRUE(
        fm::copyContentsOfDirectoryHavingPathExtensionToDirectory(manager(), at("other"), "CSV", at("dst")));
    EXPECT_TRUE(exists("dst/x.csv"));
    EXPECT_FALSE(exists("dst/y.txt"));
}

TEST_F(FileOperations, MovesIgnoreFailuresAndNeverDisturbTheirSources) {
    file("m/a.txt", "a");
    file("m/b.txt", "moving b");
    file("into/b.txt", "kept b");
    fm::movePathsToDirectory(manager(), {at("m/a.txt"), at("m/b.txt"), at("m/missing")}, at("into"));
    EXPECT_EQ(contents("into/a.txt"), "a");
    EXPECT_FALSE(exists("m/a.txt"));
    EXPECT_EQ(contents("m/b.txt"), "moving b");
    EXPECT_EQ(contents("into/b.txt"), "kept b");
    EXPECT_TRUE(logged_.empty());
}

TEST_F(FileOperations, RenameKeepsFolderAndExtensionAndRefusesACaseChange) {
    struct Case {
        const char* name;
        bool renamed;
        const char* result;
    };
    const Case cases[] = {{"quiz", false, "q/Quiz.xml"},
                          {"Test", true, "q/Test.xml"},
                          {"Again.csv", true, "q/Again.xml"},
                          {"/else/where/Last.txt", true, "q/Last.xml"}};
    std::string current = "q/Quiz.xml";
    file(current, "quiz");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(fm::renameFileAtPathTo(manager(), at(current), c.name), c.renamed);
        EXPECT_EQ(contents(c.result), "quiz");
        EXPECT_EQ(exists(current), !c.renamed);
        current = c.result;
    }
    file("q/plain", "p");
    EXPECT_TRUE(fm::renameFileAtPathTo(manager(), at("q/plain"), "Bare.txt"));
    EXPECT_TRUE(exists("q/Bare"));
    EXPECT_TRUE(logged_.empty());

    file("q/Taken.xml", "taken");
    EXPECT_FALSE(fm::renameFileAtPathTo(manager(), at(current), "Taken"));
    EXPECT_EQ(contents(current), "quiz");
    EXPECT_EQ(contents("q/Taken.xml"), "taken");
    EXPECT_EQ(logged_, std::vector<std::string>{"There was a problem renaming \"" + path(current) +
                                                "\" to \"Taken\".\nReason: File exists"});
}

TEST_F(FileOperations, RemovalsLogEachFailureAndGoOn) {
    file("r/a.zip");
    file("r/b.ZIP");
    file("r/c.txt");
    file("r/sub.zip/inner");
    fm::removeFilesInDirectoryWithExtension(manager(), at("r"), Text("zip"));
    EXPECT_EQ(systemOrder("r"), Texts{"c.txt"});
    file("r/sub/x");
    fm::removeFilesInDirectory(manager(), at("r"));
    EXPECT_TRUE(fs::is_empty(path("r")));
    file("r/one");
    fm::removeFilesAtPaths(manager(), {at("r/missing"), at("r/one")});
    EXPECT_FALSE(exists("r/one"));
    EXPECT_EQ(logged_, std::vector<std::string>{"Failed to delete path: " + path("r/missing")});
}

TEST_F(FileOperations, AttributesAliasesAndHiddenExtensions) {
    file("t/real.txt");
    fs::create_symlink(path("t/real.txt"), path("t/one"));
    fs::create_symlink("one", path("t/two"));
    fs::create_symlink("loop2", path("t/loop1"));
    fs::create_symlink("loop1", path("t/loop2"));
    fs::create_symlink("gone", path("t/dangling"));
    EXPECT_EQ(fm::resolveAliasAtPath(at("t/two")), at("t/real.txt"));
    for (const char* unchanged : {"t/real.txt", "t/loop1", "t/dangling", "t/missing"})
        EXPECT_EQ(fm::resolveAliasAtPath(at(unchanged)), at(unchanged));

    EXPECT_FALSE(fm::isFileExtensionHiddenAtPath(at("t/real.txt")));
    EXPECT_TRUE(fm::hideExtensionOfFileAtPath(at("t/real.txt")));
    EXPECT_TRUE(fm::isFileExtensionHiddenAtPath(at("t/real.txt")));
    EXPECT_FALSE(fm::hideExtensionOfFileAtPath(at("t/missing")));
    EXPECT_FALSE(fm::isFileExtensionHiddenAtPath(at("t/missing")));

    fs::permissions(path("t/real.txt"), fs::perms(0600));
    fm::setItemToUniversallyWritableAtPath(at("t/real.txt"));
    EXPECT_EQ(permissions("t/real.txt"), fs::perms(0777));
}

TEST_F(FileOperations, RecursiveAttributesSkipTheItemAndAlwaysSucceed) {
    const bv::ValueDictionary readOnly{{Text(bv::FilePosixPermissions), bv::Value(bv::Number::int32(0500))}};
    folder("empty");
    const fs::perms emptyBefore = permissions("empty");
    bv::ValueArray errors;
    EXPECT_TRUE(fm::setAttributesOfItemAtPathRecursivelyErrors(readOnly, at("empty"), true, &errors));
    EXPECT_EQ(permissions("empty"), emptyBefore);

    file("tree/a");
    file("tree/sub/b");
    const fs::perms before = permissions("tree");
    EXPECT_TRUE(fm::setAttributesOfItemAtPathRecursivelyErrors(readOnly, at("tree"), true, &errors));
    EXPECT_EQ(permissions("tree"), before);
    EXPECT_EQ(permissions("tree/a"), fs::perms(0500));
    EXPECT_EQ(permissions("tree/sub"), fs::perms(0500));
    EXPECT_TRUE(fm::setAttributesOfItemAtPathRecursivelyErrors(readOnly, at("missing"), true, &errors));
    EXPECT_FALSE(fm::setAttributesOfItemAtPathRecursivelyErrors(readOnly, at("missing"), false, &errors));
    EXPECT_TRUE(errors.empty());
    fs::permissions(path("tree/sub"), fs::perms(0700));
}

TEST_F(FileOperations, ErrorCallbackLogsAndStops) {
    const bv::ValueDictionary info{{"Path", bv::Value(Text("/a"))},
                                   {"ToPath", bv::Value(Text("/b"))},
                                   {"Error", bv::Value(Text("Disk full"))}};
    EXPECT_FALSE(fm::fileManagerShouldProceedAfterError(manager(), manager(), info));
    EXPECT_EQ(logged_,
              std::vector<std::string>{"There was a problem copying \"/a\" to \"/b\".\nReason: Disk full"});
}

TEST_F(FileOperations, ZipPacksTheContentsAndUnzipEmptiesTheTargetFirst) {
    file("src/a.txt", "a");
    file("src/sub/b.txt", "b");
    file("src/-m", "not an option");
    EXPECT_EQ(fm::zipPathSaveZipArchiveToPath(at("src"), at("out.zip")), 0);
    EXPECT_TRUE(exists("src/a.txt"));
    file("dest/old.txt");
    EXPECT_TRUE(fm::unzipPathToPathRemoveSourcePath(at("out.zip"), at("dest"), false));
    EXPECT_EQ(contents("dest/a.txt"), "a");
    EXPECT_EQ(contents("dest/sub/b.txt"), "b");
    EXPECT_EQ(contents("dest/-m"), "not an option");
    EXPECT_FALSE(exists("dest/old.txt"));
    EXPECT_TRUE(fm::unzipPathToPathRemoveSourcePath(at("out.zip"), at("dest2"), true));
    EXPECT_TRUE(exists("dest2/a.txt"));
    EXPECT_FALSE(exists("out.zip"));

    file("broken.zip", "not an archive");
    EXPECT_FALSE(fm::unzipPathToPathRemoveSourcePath(at("broken.zip"), at("dest3"), true));
    EXPECT_TRUE(exists("broken.zip"));
    EXPECT_THROW((void)fm::unzipPathToPathRemoveSourcePath(at("broken.zip"), "", false),
                 bv::InvalidArgumentException);
    folder("empty");
    EXPECT_EQ(fm::zipPathSaveZipArchiveToPath(at("empty"), at("x.zip")), 12);  // zip: nothing to do
    EXPECT_THROW((void)fm::zipPathSaveZipArchiveToPath(at("missing"), at("x.zip")),
                 bv::InvalidArgumentException);
    EXPECT_TRUE(logged_.empty());
}

TEST_F(FileOperations, UnzipWithSevenZipPassesTheTargetInOneArgument) {
    folder("support/Brevant/Zip");
    file("support/Brevant/Zip/7za", "#!/bin/sh\n{ pwd; for a in \"$@\"; do echo \"$a\"; done; } > '" +
                                        path("record.txt") + "'\nexit 3\n");
    fs::permissions(path("support/Brevant/Zip/7za"), fs::perms(0755));
    file("a.zip", "whatever");
    EXPECT_FALSE(fm::unzipPathToPathRemoveSourcePath(at("a.zip"), at("into"), true));
    EXPECT_EQ(contents("record.txt"), path("into") + "\nx\n" + path("a.zip") + "\n-o" + path("into") + "\n");
    EXPECT_TRUE(exists("a.zip"));  // a failed tool leaves the archive
}

TEST_F(FileOperations, UnpackingClimbingEntriesWritesNothingOutsideTheTarget) {
    const std::string absolute = path("abs.txt");
    const std::pair<std::string, std::string> entries[] = {{"zz/climb.txt", "../climb.txt"},
                                                           {"Q" + absolute.substr(1), absolute}};
    std::vector<std::string> tools{"/usr/bin/unzip"};
    if (fs::exists("/usr/bin/7za")) tools.emplace_back("/usr/bin/7za");
    for (const std::string& tool : tools) {
        if (tool != "/usr/bin/unzip") {
            folder("support/Brevant/Zip");
            fs::create_symlink(tool, path("support/Brevant/Zip/7za"));
        }
        for (const auto& [relative, entryName] : entries) {
            SCOPED_TRACE(tool + " " + entryName);
            const std::string archive = archiveWithEntryNamed(relative, entryName);
            (void)fm::unzipPathToPathRemoveSourcePath(Text(archive), at("target/inner"), false);
            EXPECT_FALSE(exists("climb.txt") || exists("target/climb.txt") || exists("abs.txt"));
            EXPECT_EQ(systemOrder("").size(), 3u);  // support, target and the archive
            EXPECT_EQ(systemOrder("target"), Texts{"inner"});
            const auto unpacked = fs::recursive_directory_iterator(path("target/inner"));
            EXPECT_EQ(std::count_if(begin(unpacked), end(unpacked),
                                    [](const auto& item) { return item.is_regular_file(); }),
                      1);
            fs::remove(archive);
        }
    }
}
