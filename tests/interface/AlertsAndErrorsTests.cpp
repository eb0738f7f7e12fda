// Alerts, errors, exceptions, help, speech and sheets of every object, window controller and document; the
// CSV and image pickers; the Qt sheet and file-panel presenters driven headless.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <tuple>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"
#include "BrevantCocoaExtensions/interface/BNSOpenPanel.hpp"
#include "BrevantCocoaExtensions/interface/BVNSApplicationSheets.hpp"
#include "BrevantCocoaExtensions/interface/BVNSDocument.hpp"
#include "BrevantCocoaExtensions/interface/BVNSError.hpp"
#include "BrevantCocoaExtensions/interface/BVNSObject.hpp"
#include "BrevantCocoaExtensions/interface/BVNSWindowController.hpp"
#include "BrevantCocoaExtensions/interface/QtAlertPresenter.hpp"
#include "BrevantCocoaExtensions/interface/QtFilePanelPresenter.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/UserDefaults.hpp"
#include "interface/InterfaceTestSupport.hpp"

using bv::Text;
using bv::Value;

struct QuizWindow {
    virtual ~QuizWindow() = default;
};
struct ScoringWindow : QuizWindow {};

namespace {
class Alerts : public bvtest::InterfaceTest {};

struct Answer {
    std::string title;
    int returnCode;
    void* context;
    bool operator==(const Answer&) const = default;
};

// Records the sheet answers it is given.
template <class Base>
class Answering : public Base {
  public:
    using Base::Base;
    void alertDidEndReturnCodeContextInfo(const bv::Alert& alert, int returnCode, void* context) override {
        answers.push_back({alert.title.toUtf8(), returnCode, context});
    }
    std::vector<Answer> answers;
};

std::vector<std::string> texts(const bv::Alert& alert) {
    std::vector<std::string> out{alert.title.toUtf8(), alert.message.toUtf8()};
    for (const Text& button : alert.buttons)
        out.push_back(button.toUtf8());
    return out;
}

// Runs `act` on the active modal dialog of type T once the event loop runs it.
template <class T, class Act>
void whenModal(Act act) {
    QTimer::singleShot(0, [act] {
        auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
    });
}
}  // namespace

TEST_F(Alerts, ObjectsFormatAlertsExceptionsErrorsAndSpeech) {
    const ScoringWindow window;
    const QuizWindow& receiver = window;  // the dynamic type names the class
    bv::AlertRecorder recorder;
    bv::BVNSObject::showAlertWithFormat(receiver, Text("%d of %@ answered"), 3, Text("4"));
    ASSERT_EQ(recorder.alerts().size(), 1u);
    EXPECT_EQ(texts(recorder.alerts()[0]), (std::vector<std::string>{"Alert", "3 of 4 answered", "OK"}));

    try {
        bv::BVNSObject::raiseExceptionWithNameFormat(receiver, "BVQuizException",
                                                     Text("Question %d has no answers"), 7);
        FAIL() << "no exception";
    } catch (const bv::Exception& exception) {
        EXPECT_EQ(exception.name(), "BVQuizException");
        EXPECT_EQ(exception.reason(), "ScoringWindow: Question 7 has no answers");
    }
    const bv::Error error =
        bv::BVNSObject::errorWithCodeFormat(receiver, 12, Text("Line %d: %@"), 5, Text("bad"));
    EXPECT_EQ(error.domain, "ScoringWindow");
    EXPECT_EQ(error.code, 12);
    EXPECT_EQ(error.localizedDescription, Text("Line 5: bad"));
    const bv::Error built = bv::BVNSError::errorWithDomainCodeFormat("BVQuizDomain", -3, Text("%@%%"), 50);
    EXPECT_EQ(std::tie(built.domain, built.code, built.localizedDescription),
              std::make_tuple(std::string("BVQuizDomain"), std::int64_t{-3}, Text("50%")));

    bv::BVNSObject::say(receiver, Text("Question %d"), 3);
    bv::BVNSObject::say(receiver, Text("The \"%@\" answer"),
                        Text("right"));  // quotes break the script: silent
    bv::BVNSObject::say(receiver, Text("%@"), Text("$(reboot)"));
    EXPECT_EQ(spoken_, (std::vector<std::string>{"Question 3", "$(reboot)"}));
    EXPECT_TRUE(logged_.empty());  // say ignores its errors
}

TEST_F(Alerts, DeepCopySharesNothingAndRefusesObjects) {
    const Value quiz(bv::ValueDictionary{{Text("answers"), Value(bv::ValueArray{Value(1), Value("B")})}});
    EXPECT_EQ(bv::BVNSObject::deepCopy(quiz), quiz);
    const Value holding(
        bv::ValueArray{Value(bv::ValueDictionary{{Text("o"), Value(std::make_shared<bv::Object>())}})});
    EXPECT_THROW((void)bv::BVNSObject::deepCopy(holding), bv::InvalidArgumentException);
}

TEST_F(Alerts, HelpAnchorOpensThePageHoldingIt) {
    file("Quiz.app/Contents/Resources/QuizHelp/index.html", "<h1>Help</h1>");
    file("Quiz.app/Contents/Resources/QuizHelp/a/scoring.html", "<a name=\"scoring\"></a>");
    file("Quiz.app/Contents/Resources/QuizHelp/b.html", "<h2 id='scoring'>late</h2>");
    std::vector<std::string> opened;
    const auto previous = bv::BVNSObject::setHelpOpener([&](const Text& url) {
        opened.push_back(url.toUtf8());
        return true;
    });
    const QuizWindow receiver;
    bv::BVNSObject::showHelpAnchor(receiver, Text("scoring"));
    bv::BVNSObject::showHelpAnchor(receiver, Text("no such anchor"));
    const std::string book = "file://" + path("Quiz.app/Contents/Resources/QuizHelp");
    EXPECT_EQ(opened, (std::vector<std::string>{book + "/a/scoring.html#scoring",
                                                book + "/index.html#no%20such%20anchor"}));
    bv::Bundle::setMainInfoDictionary(bv::ValueDictionary{});
    bv::BVNSObject::showHelpAnchor(receiver, Text("scoring"));
    EXPECT_EQ(logged_, std::vector<std::string>{
                           "showHelpAnchor: the application names no help book (CFBundleHelpBookName)"});
    bv::BVNSObject::setHelpOpener(previous);
}

TEST_F(Alerts, SheetAlertsReachTheRecorderAndTheDelegate) {
    QWidget window;
    int context = 0;
    Answering<bv::WindowController> controller(&window);
    {
        bv::AlertRecorder recorder(1);  // the alternate button
        bv::BVNSWindowController::
            displayAlertWithMessageTextContextDefaultButtonAlternateButtonOtherButtonInformativeTextWithFormat(
                controller, Text("End the quiz?"), &context, Text("End"), Text("Cancel"), std::nullopt,
                Text("%d of %d answered."), 18, 24);
        ASSERT_EQ(recorder.alerts().size(), 1u);
        EXPECT_EQ(texts(recorder.alerts()[0]),
                  (std::vector<std::string>{"End the quiz?", "18 of 24 answered.", "End", "Cancel"}));
    }
    Answering<bv::Document> document(&window);
    {
        bv::AlertRecorder recorder(1);  // with no alternate button, the second is the other button
        bv::BVNSDocument::
            displayAlertWithMessageTextContextDefaultButtonAlternateButtonOtherButtonInformativeTextWithFormat(
                document, Text("Save?"), nullptr, std::nullopt, std::nullopt, Text("Later"), Text("Unsaved"));
        EXPECT_EQ(texts(recorder.alerts().at(0)),
                  (std::vector<std::string>{"Save?", "Unsaved", "OK", "Later"}));
    }
    EXPECT_EQ(controller.answers,
              (std::vector<Answer>{{"End the quiz?", bv::AlertAlternateReturn, &context}}));
    EXPECT_EQ(document.answers, (std::vector<Answer>{{"Save?", bv::AlertOtherReturn, nullptr}}));
}

TEST_F(Alerts, QtSheetIsWindowModalAndAnswersWhenItCloses) {
    const auto previous = bv::QtAlertPresenter::install();
    QWidget window;
    window.show();
    Answering<bv::WindowController> controller(&window);
    bv::BVNSWindowController::
        displayAlertWithMessageTextContextDefaultButtonAlternateButtonOtherButtonInformativeTextWithFormat(
            controller, Text("Reset scores?"), nullptr, Text("Reset"), Text("Keep"), Text("Help"),
            Text("All %d"), 30);
    const auto boxes = window.findChildren<QMessageBox*>();
    ASSERT_EQ(boxes.size(), 1);
    QMessageBox& box = *boxes.front();
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.windowModality(), Qt::WindowModal);
    EXPECT_EQ(box.text(), QStringLiteral("All 30"));
    EXPECT_TRUE(controller.answers.empty());  // still open: the call did not wait
    box.buttons().at(2)->click();
    ASSERT_EQ(controller.answers.size(), 1u);
    EXPECT_EQ(controller.answers[0].returnCode, bv::AlertOtherReturn);
    bv::AlertCenter::setSheetPresenter(nullptr);
    bv::AlertCenter::setPresenter(previous);
}

TEST_F(Alerts, BeginSheetCallsTheBlockOnceWithTheResult) {
    QWidget window;
    auto* sheet = new QDialog;
    std::vector<int> results;
    bv::BVNSApplication::beginSheetModalForWindowDidEndBlock(*sheet, window,
                                                             [&](int code) { results.push_back(code); });
    EXPECT_EQ(sheet->parentWidget(), &window);
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(sheet->isVisible());
    sheet->done(7);
    sheet->done(QDialog::Accepted);
    EXPECT_EQ(results, std::vector<int>{7});
}

TEST_F(Alerts, PickersStartFromTheRememberedFileAndRememberTheChoice) {
    std::vector<bv::FilePanelRequest> requests;
    std::optional<std::vector<Text>> answer;
    const auto previous = bv::BVFileManager::setFilePanelPresenter([&](const bv::FilePanelRequest& request) {
        requests.push_back(request);
        return answer;
    });
    answer = std::vector<Text>{Text("/data/class 3B.csv")};
    EXPECT_EQ(bv::BNSOpenPanel::pickCSVFileToOpen(), Text("/data/class 3B.csv"));
    EXPECT_EQ(bv::BNSOpenPanel::pickCSVFileToOpen(), Text("/data/class 3B.csv"));
    answer = std::vector<Text>{Text("/pictures/map.png")};
    EXPECT_EQ(bv::BNSOpenPanel::pickImageFile(), Text("/pictures/map.png"));
    answer = std::nullopt;
    EXPECT_EQ(bv::BNSOpenPanel::pickImageFile(), std::nullopt);
    EXPECT_EQ(bv::UserDefaults::stringForKey(Text("BVLastOpenedImageFile")), Text("/pictures/map.png"));
    EXPECT_EQ(bv::UserDefaults::stringForKey(Text("BVLastOpenedCSVFile")), Text("/data/class 3B.csv"));

    ASSERT_EQ(requests.size(), 4u);
    const struct {
        const char* directory;
        const char* proposed;
        std::vector<Text> types;
    } expected[] = {
        {"home", "", {Text("csv")}},
        {"/data", "class 3B.csv", {Text("csv")}},
        {"home", "", {Text("jpg"), Text("tiff"), Text("png"), Text("gif")}},
        {"/pictures", "/pictures/map.png", {Text("jpg"), Text("tiff"), Text("png"), Text("gif")}},
    };
    for (std::size_t i = 0; i < requests.size(); ++i) {
        const std::string directory =
            expected[i].directory[0] == '/' ? expected[i].directory : path(expected[i].directory);
        EXPECT_EQ(requests[i].directory, Text(directory)) << i;
        EXPECT_EQ(requests[i].nameFieldValue, Text(expected[i].proposed)) << i;
        EXPECT_EQ(requests[i].fileTypes, expected[i].types) << i;
        EXPECT_TRUE(requests[i].kind == bv::FilePanelRequest::Kind::Open && requests[i].canChooseFiles &&
                    !requests[i].canChooseDirectories && !requests[i].allowsMultipleSelection);
    }
    bv::BVFileManager::setFilePanelPresenter(previous);
}

TEST_F(Alerts, QtFilePanelPresenterRunsTheDialogTheRequestDescribes) {
    file("lists/class.csv", "name\nAda\n");
    file("lists/notes.txt", "x");
    const auto previous = bv::QtFilePanelPresenter::install();
    whenModal<QFileDialog>([this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import"));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Files (*.csv)")});
        EXPECT_EQ(dialog.directory().absolutePath(), QString::fromStdString(path("lists")));
        dialog.selectFile(QString::fromStdString(path("lists/class.csv")));
        static_cast<QDialog&>(dialog).accept();  // QFileDialog::accept, public through QDialog
    });
    EXPECT_EQ(bv::BVFileManager::filePathFromOpenFileDialogWithTitleFileTypesCanChooseDirectoriesInitialPath(
                  Text("Import"), {Text("csv")}, false, at("lists")),
              at("lists/class.csv"));
    whenModal<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(bv::BVFileManager::directoryPathFromOpenDirectoryDialogWithTitle(Text("Folder")), std::nullopt);

    bv::FilePanelRequest save;
    save.kind = bv::FilePanelRequest::Kind::Save;
    save.requiredFileType = Text("csv");
    save.nameFieldValue = Text("scores");
    const auto dialog = bv::QtFilePanelPresenter::dialogForRequest(save);
    EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog->defaultSuffix(), QStringLiteral("csv"));
    bv::BVFileManager::setFilePanelPresenter(previous);
}
