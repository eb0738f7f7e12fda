// The "Alerts" page: a sheet alert whose answer is shown, speech, the CSV picker, and the texts the
// library formats for messages, errors and scripts.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <initializer_list>

#include "Pages.hpp"

#include "BrevantCocoaExtensions/interface/BNSOpenPanel.hpp"
#include "BrevantCocoaExtensions/interface/BVAppleScriptController.hpp"
#include "BrevantCocoaExtensions/interface/BVNSError.hpp"
#include "BrevantCocoaExtensions/interface/BVNSObject.hpp"
#include "BrevantCocoaExtensions/interface/BVNSWindowController.hpp"
#include "BrevantCocoaExtensions/interface/QtAlertPresenter.hpp"
#include "BrevantCocoaExtensions/interface/QtFilePanelPresenter.hpp"
#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace {

// A window controller that shows the answer of its sheet alerts in a label.
class QuizController : public bv::WindowController {
  public:
    QuizController(QWidget* window, QLabel* answer) : WindowController(window), answer_(answer) {}
    void alertDidEndReturnCodeContextInfo(const bv::Alert& alert, int returnCode, void*) override {
        if (answer_)
            answer_->setText(QStringLiteral("\"%1\" ended with return code %2")
                                 .arg(bv::toQString(alert.title))
                                 .arg(returnCode));
    }

  private:
    QPointer<QLabel> answer_;
};

QLabel* textLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

QGroupBox* actionsBox(QWidget* page) {
    auto* box = new QGroupBox(QStringLiteral("Sheets, speech and panels"), page);
    auto* layout = new QVBoxLayout(box);
    auto* answer = textLabel(QStringLiteral("No sheet shown yet."), box);
    auto* controller = new QuizController(page, answer);
    QObject::connect(page, &QObject::destroyed, [controller] { delete controller; });

    auto* sheet = new QPushButton(QStringLiteral("End the quiz…"), box);
    QObject::connect(sheet, &QPushButton::clicked, [controller] {
        bv::BVNSWindowController::
            displayAlertWithMessageTextContextDefaultButtonAlternateButtonOtherButtonInformativeTextWithFormat(
                *controller, bv::Text("End the quiz now?"), nullptr, bv::Text("End Quiz"), bv::Text("Cancel"),
                std::nullopt, bv::Text("%d of %d participants have answered."), 18, 24);
    });
    auto* say = new QPushButton(QStringLiteral("Say the question"), box);
    QObject::connect(say, &QPushButton::clicked, [page] {
        bv::BVNSObject::say(*page, bv::Text("Question %d. What is %@?"), 3,
                            bv::Text("one half plus one quarter"));
    });
    auto* chosen = textLabel(QStringLiteral("No class list chosen."), box);
    auto* pick = new QPushButton(QStringLiteral("Import a class list (CSV)…"), box);
    QObject::connect(pick, &QPushButton::clicked, [chosen] {
        const auto path = bv::BNSOpenPanel::pickCSVFileToOpen();
        chosen->setText(path ? bv::toQString(*path)
                             : QStringLiteral("Cancelled: the remembered file stays."));
    });
    for (QWidget* widget : std::initializer_list<QWidget*>{sheet, answer, say, pick, chosen})
        layout->addWidget(widget);
    layout->addStretch();
    return box;
}

// A picture of the box that "End the quiz…" shows, drawn without showing it.
QLabel* sheetPreview(QWidget* parent) {
    const bv::Alert alert{bv::AlertStyle::Warning,
                          bv::Text("End the quiz now?"),
                          bv::Text("18 of 24 participants have answered."),
                          {bv::Text("End Quiz"), bv::Text("Cancel")}};
    const auto box = bv::QtAlertPresenter::messageBoxForAlert(alert);
    box->adjustSize();
    auto* label = new QLabel(parent);
    label->setPixmap(box->grab());
    label->setToolTip(QStringLiteral("The sheet alert, as the button shows it"));
    return label;
}

QGroupBox* textsBox(QWidget* page) {
    auto* box = new QGroupBox(QStringLiteral("Formatted texts"), page);
    auto* layout = new QVBoxLayout(box);
    const bv::Error error = bv::BVNSError::errorWithDomainCodeFormat(
        "BVQuizDomain", 42, bv::Text("Question %@ has no answers."), 7);
    layout->addWidget(textLabel(QStringLiteral("Error: %1 %2: %3")
                                    .arg(QString::fromStdString(error.domain))
                                    .arg(error.code)
                                    .arg(bv::toQString(error.localizedDescription)),
                                box));
    const bv::Text source("set name to \"STUDENT\"\nreturn \"Well done, \" & name & \"!\"");
    const auto replaced = bv::BVAppleScriptController::replaceTokensInSourceWithValues(
        source, bv::ValueDictionary{{bv::Text("STUDENT"), bv::Value("Ada")}});
    layout->addWidget(
        textLabel(QStringLiteral("Script with its token replaced:\n") + bv::toQString(*replaced), box));
    const auto answer = bv::Script(*replaced).executeAndReturnError();
    layout->addWidget(
        textLabel(QStringLiteral("It answers: ") +
                      (answer ? bv::toQString(answer->description()) : QStringLiteral("(error)")),
                  box));
    layout->addWidget(sheetPreview(box));
    layout->addStretch();
    return box;
}

}  // namespace

namespace gallery {

QWidget* makeAlertsPage(QWidget* parent) {
    bv::QtFilePanelPresenter::install();  // the pickers become file dialogs
    auto* page = new QWidget(parent);
    auto* columns = new QHBoxLayout(page);
    columns->addWidget(actionsBox(page));
    columns->addWidget(textsBox(page), 1);
    return page;
}

}  // namespace gallery
