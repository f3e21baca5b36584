#include "shell/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "aids/program_tip.h"
#include "commands/run_view.h"
#include "platform/fonts.h"
#include "platform/input_guard.h"
#include "platform/menu.h"
#include "platform/twips.h"
#include "shell/main_menu.h"
#include "shell/settings.h"

namespace shell {

namespace {

constexpr int clientWidth = 11880;
constexpr int clientHeight = 8310;

QWidget* MakeClient(QWidget* window) {
    auto* client = new QWidget(window);
    client->setObjectName("client");
    client->setFont(platform::WindowFont());
    // The border of the hexadecimal keypad stands a pixel beyond the right edge.
    client->setFixedSize(platform::Pixels(clientWidth) + 1, platform::Pixels(clientHeight));
    return client;
}

// Shows the client at its top left, and scrolls where it does not fit; by the wheel and the bars, but not by cursor
// keys that a control had no use for.
class ClientArea : public QScrollArea {
public:
    ClientArea(QWidget* client, QWidget* parent) : QScrollArea(parent) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidget(client);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

// From left to right.
QList<QWidget*> ButtonsOf(const QWidget& parent) {
    QList<QWidget*> buttons;
    for (platform::Button* button : parent.findChildren<platform::Button*>(Qt::FindDirectChildrenOnly))
        buttons.append(button);
    std::ranges::sort(buttons, {}, &QWidget::x);
    return buttons;
}

}  // namespace

frmMain::frmMain(m8085::MachineState& machine, m8085::CodeMap& codeMap, std::function<void()> showAbout,
                 std::function<void()> endProcess)
    : showAbout_(std::move(showAbout)),
      endProcess_(std::move(endProcess)),
      client_(MakeClient(this)),
      clientArea_(new ClientArea(client_, this)),
      columns_(ReadColumns()),
      document_(client_),
      registerPanel_(machine, document_.txtCode(), client_),
      memoryGrid_(machine, columns_, client_),
      runControl_(machine, codeMap, commands::ViewOn(buttons_, document_, registerPanel_, memoryGrid_)),
      assembleCommand_(machine, codeMap, document_, runControl_, registerPanel_, memoryGrid_),
      convertCommand_(document_),
      dataFileCommands_(machine, document_.cDialog(), runControl_, memoryGrid_),
      codeAssistant_(document_.txtCode(), registerPanel_, memoryGrid_, client_),
      delayDesigner_(document_.txtCode()) {
    setObjectName("frmMain");
    auto* const menuBar = new platform::MenuBar(this);
    menuBar->setFont(platform::SansSerif(9));
    setMenuBar(menuBar);
    connect(menuBar, &platform::MenuBar::FocusIsLeft, &eye_, [this] { buttons_.TakeFocus(); });
    BuildCommands(*this, CommandTable(), buttons_);
    connect(&document_.txtCode(), &platform::ProgramText::MenuOpening, this,
            AddContextCommands(*this, document_.txtCode(), EditorCommands(), buttons_));
    AddContextCommands(*this, *memoryGrid_.findChild<platform::Grid*>(), GridCommands(), buttons_);
    PlaceControls();
    resize(client_->size().grownBy({0, 0, 0, menuBar->sizeHint().height()}));

    connect(&document_, &editor::ProgramDocument::TitleChanged, this, &frmMain::SetTitle);
    connect(&document_, &editor::ProgramDocument::TextChanged, this, [this] {
        runControl_.LoseText();
        assembleCommand_.Forget();
    });
    connect(&memoryGrid_, &panels::MemoryGrid::Cleared, this, [this] {
        runControl_.NoteOtherChange();
        runControl_.LoseProgram();
        assembleCommand_.Forget();
    });
    connect(&memoryGrid_, &panels::MemoryGrid::Edited, this, [this] { runControl_.NoteOtherChange(); });
    connect(&memoryGrid_, &panels::MemoryGrid::ColumnsChanged, this, [this] { runControl_.ForgetChanges(); });
    connect(&registerPanel_, &panels::RegisterPanel::Edited, this, [this] { runControl_.NoteOtherChange(); });
    connect(&codeAssistant_, &aids::CodeAssistant::CaptionChanged, findChild<platform::Button*>("cmdCodeAssistant"),
            &platform::Button::SetCaption);
    auto* const goRound = new QShortcut(QKeySequence("F6"), this);
    goRound->setAutoRepeat(false);
    connect(goRound, &QShortcut::activated, this, &frmMain::GoRound);

    connect(&document_, &editor::ProgramDocument::Replaced, this, [this] {
        document_.txtCode().ClearMarks();
        codeAssistant_.StartOver();
    });
    connect(&document_.txtCode(), &platform::ProgramText::MarksChanged, this,
            [this] { runControl_.SetMarkedLines(document_.txtCode().Marks().KeptNumbers()); });
    document_.txtCode().SetTips([this, &machine, &codeMap](int line, const QString& text, int column) {
        const std::u16string characters = text.toStdU16String();
        return QString::fromStdU16String(aids::ProgramTip({characters, line, static_cast<std::size_t>(column)}, machine,
                                                          codeMap, assembleCommand_.Assembled()));
    });
    AddUndoKeys();
    FollowTheEye();

    memoryGrid_.FormatGrid();
    registerPanel_.DisplayRegs();
    memoryGrid_.RefreshRAMDisplay();
    document_.mnuNew_Click();
    document_.cDialog().SetInitialDirectory(QCoreApplication::applicationDirPath());

    qApp->installEventFilter(this);
    qApp->installEventFilter(new platform::InputGuard(this));
}

// The layout is fixed at the top left of the window; where the window is smaller it scrolls.
void frmMain::PlaceControls() {
    platform::Place(document_.txtCode(), 120, 600, 6975, 7575);
    platform::Place(registerPanel_, 7200, 600, 4575, 1935);
    platform::Place(memoryGrid_, 7200, 2640, 4575, 5535);

    // The editor comes first, then the controls in reading order. The keys of the Code Assistant follow their button,
    // and the grid its buttons.
    QWidget* previous = &document_.txtCode();
    const auto append = [&previous](QWidget* control) {
        QWidget::setTabOrder(std::exchange(previous, control), control);
    };
    for (QWidget* button : ButtonsOf(*client_)) {
        append(button);
        if (button->objectName() == "cmdCodeAssistant") std::ranges::for_each(codeAssistant_.Keys(), append);
    }
    for (QWidget* control : registerPanel_.findChildren<QWidget*>())
        if (control->focusPolicy() != Qt::NoFocus) append(control);
    std::ranges::for_each(ButtonsOf(memoryGrid_), append);
    append(memoryGrid_.findChild<platform::Grid*>());

    setCentralWidget(clientArea_);
}

// Where the window is too small for its layout, it scrolls to what is about to be used. What the mouse points at stays
// where it is; but what a command shows is always to be seen.
void frmMain::FollowTheEye() {
    const auto follow = [this](QWidget& control) {
        if (!isByMouse_ && client_->isAncestorOf(&control)) clientArea_->ensureWidgetVisible(&control);
    };
    platform::ProgramText& txtCode = document_.txtCode();
    // The focus that comes back after a box is nothing new, and must not take from view what the command has shown.
    connect(qApp, &QApplication::focusChanged, &eye_,
            [=, this, latest = QPointer<QWidget>()](const QWidget*, QWidget* control) mutable {
                if (!client_->isAncestorOf(control) || control == latest) return;
                latest = control;
                follow(*control);
            });
    connect(&txtCode, &QPlainTextEdit::cursorPositionChanged, &eye_, [=, &txtCode] {
        if (txtCode.hasFocus()) follow(txtCode);
    });
    connect(memoryGrid_.findChild<platform::Grid*>(), &platform::Grid::RowColChange, &eye_, [=, this] {
        if (QWidget* control = focusWidget(); memoryGrid_.isAncestorOf(control)) follow(*control);
    });
    connect(&txtCode, &platform::ProgramText::LineShown, &eye_,
            [this, &txtCode] { clientArea_->ensureWidgetVisible(&txtCode); });
    connect(&memoryGrid_, &panels::MemoryGrid::Shown, &eye_, [this](const QRect& place) {
        const QPoint center = memoryGrid_.mapTo(client_, place.center());
        clientArea_->ensureVisible(center.x(), center.y(), place.width(), place.height());
    });
}

void frmMain::SingleStep() {
    runControl_.StepProgram();
    memoryGrid_.BringNextIntoView();
}

void frmMain::StepBack() {
    runControl_.StepBack();
    memoryGrid_.BringNextIntoView();
}

// A second call while the save question of the first is open, as at the end of the session, does not ask again.
void frmMain::mnuExit_Click() {
    if (!std::exchange(exiting_, true)) document_.mnuNew_Click();
    SaveColumns(columns_);
    endProcess_();
}

void frmMain::CommitSession(bool mayAsk) {
    SaveColumns(columns_);
    if (mayAsk) document_.OfferToSave();
}

void frmMain::closeEvent(QCloseEvent* event) {
    event->accept();
    mnuExit_Click();
}

// Only what no control had a use for comes here: a text box keeps its Escape.
void frmMain::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && runControl_.IsRunning())
        runControl_.Stop();
    else
        QMainWindow::keyPressEvent(event);
}

bool frmMain::IsEditKey(const QKeyEvent& event) const {
    const auto entries = findChild<QMenu*>("mnuEdit")->actions();
    const QKeySequence key(event.keyCombination());
    const auto shortcuts = findChildren<QShortcut*>(Qt::FindDirectChildrenOnly);
    return std::ranges::any_of(entries, [&key](const QAction* entry) { return entry->shortcut() == key; }) ||
           std::ranges::any_of(shortcuts, [&key](const QShortcut* shortcut) { return shortcut->key() == key; });
}

// Wherever the focus is, these keys are the editor's, unless a text box has something of its own to undo.
void frmMain::AddUndoKeys() {
    const auto add = [this](const char* key, auto isAvailable, auto inBox, auto inEditor) {
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, [=, this] {
            auto* box = qobject_cast<QLineEdit*>(focusWidget());
            if (box != nullptr && !box->isReadOnly() && (box->*isAvailable)())
                (box->*inBox)();
            else
                (document_.txtCode().*inEditor)();
        });
    };
    add("Ctrl+Z", &QLineEdit::isUndoAvailable, &QLineEdit::undo, &QPlainTextEdit::undo);
    for (const char* key : {"Ctrl+Y", "Ctrl+Shift+Z"})
        add(key, &QLineEdit::isRedoAvailable, &QLineEdit::redo, &QPlainTextEdit::redo);
}

// The keys of the Edit menu and those to undo are the window's wherever the focus is; text controls would answer them
// themselves.
bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: isByMouse_ = true; break;
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress: isByMouse_ = false; break;
        default: break;
    }
    if (event->type() == QEvent::ShortcutOverride && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->window() == this && IsEditKey(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

// "[*]" in a path is literal, and not Qt's placeholder for its own mark.
void frmMain::SetTitle(QString title) {
    setWindowTitle(title.replace("[*]", "[*][*]"));
}

// Tab types a tab in the editor, so this key is the way out of it by keyboard: to the registers, or to the keys of the
// Code Assistant in their place, from there to memory, and back.
void frmMain::GoRound() {
    const QWidget* from = focusWidget();
    if (from == &document_.txtCode()) {
        if (registerPanel_.isVisible())
            registerPanel_.findChild<platform::TextBox*>()->setFocus(Qt::ShortcutFocusReason);
        else
            codeAssistant_.TakeFocus();
    } else if (registerPanel_.isAncestorOf(from) && memoryGrid_.isVisible()) {
        memoryGrid_.TakeFocus();
    } else {
        document_.txtCode().setFocus();
    }
}

}  // namespace shell
