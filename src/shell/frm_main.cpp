#include "shell/frm_main.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScrollArea>
#include <QShortcut>

#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/process.h"
#include "platform/twips.h"
#include "shell/main_menu.h"
#include "shell/settings.h"

namespace shell {

namespace {

constexpr int clientWidth = 11880;
constexpr int clientHeight = 8310;

QWidget& MakeClient() {
    auto* client = new QWidget;
    client->setObjectName("client");
    client->setFont(platform::WindowFont());
    // The border of the hexadecimal keypad stands a pixel beyond the right edge.
    client->setFixedSize(platform::Pixels(clientWidth) + 1, platform::Pixels(clientHeight));
    return *client;
}

MenuEntry Separator(const QString& name) {
    return {name, {}, {}, {}};
}

bool IsEditKey(const QKeyEvent& event) {
    for (const QKeySequence& key :
         {QKeySequence("Ctrl+X"), QKeySequence("Ctrl+C"), QKeySequence("Ctrl+V"), QKeySequence("Ctrl+A")})
        if (key == QKeySequence(event.keyCombination())) return true;
    return false;
}

}  // namespace

frmMain::frmMain(m8085::MachineState& machine, m8085::CodeMap& codeMap, std::function<void()> showAbout,
                 std::function<void()> endOfProcess)
    : client(MakeClient()),
      columns(ReadColumns()),
      buttons(&client),
      document(machine, &client),
      registerPanel(*new panels::RegisterPanel(machine, document.txtCode(), &client)),
      memoryGrid(*new panels::MemoryGrid(
          machine, columns, [this] { runCommands.LoseProgram(); }, &client)),
      runCommands(machine, codeMap, buttons, document, registerPanel, memoryGrid),
      assembleCommand(machine, codeMap, buttons.cmdCompile, document, runCommands, registerPanel, memoryGrid),
      codeAssistant(document.txtCode(), buttons.cmdCodeAssistant, memoryGrid, &client),
      delayDesigner(document.txtCode()),
      dataFiles(
          machine, document.cDialog(), [this] { memoryGrid.RefreshRAMDisplay(); }, client),
      endProcess(std::move(endOfProcess)) {
    setObjectName("frmMain");
    setWindowTitle(platform::ApplicationTitle);
    PlaceControls();
    BuildMenus(std::move(showAbout));

    connect(&document, &editor::ProgramDocument::TitleChanged, this, &frmMain::SetTitle);
    connect(&document, &editor::ProgramDocument::TextChanged, this, [this] { runCommands.LoseProgram(); });
    connect(&buttons.cmdDelay, &QPushButton::clicked, this, [this] { delayDesigner.cmdDelay_Click(); });

    memoryGrid.FormatGrid();
    registerPanel.DisplayRegs();
    memoryGrid.RefreshRAMDisplay();
    document.mnuNew_Click();
    document.cDialog().SetInitialDirectory(platform::ProgramDirectory());

    document.txtCode().setFocus();
    qApp->installEventFilter(this);
}

// The layout is fixed at the top left of the window; where the window is smaller it scrolls.
void frmMain::PlaceControls() {
    using platform::Place;
    Place(buttons.cmdCompile, 120, 120, 1335, 375);
    Place(buttons.cmdSingleStep, 1440, 120, 1335, 375);
    Place(buttons.cmdRun, 2760, 120, 1335, 375);
    Place(buttons.cmdSlowRun, 4080, 120, 1335, 375);
    Place(buttons.cmdHalt, 5400, 120, 1335, 375);
    Place(buttons.cmdReset, 6720, 120, 1335, 375);
    Place(buttons.cmdCodeAssistant, 8040, 120, 2055, 375);
    Place(buttons.cmdDelay, 10080, 120, 1695, 375);
    Place(document.txtCode(), 120, 600, 6975, 7575);
    Place(registerPanel, 7200, 600, 4575, 1935);
    Place(memoryGrid, 7200, 2640, 4575, 5535);

    // The editor comes first, then what the eye meets next.
    QWidget* previous = &document.txtCode();
    for (QWidget* button : std::initializer_list<QWidget*>{&buttons.cmdCompile, &buttons.cmdSingleStep, &buttons.cmdRun,
                                                           &buttons.cmdSlowRun, &buttons.cmdHalt, &buttons.cmdReset,
                                                           &buttons.cmdCodeAssistant, &buttons.cmdDelay})
        QWidget::setTabOrder(std::exchange(previous, button), button);

    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    scroll->setWidget(&client);
    setCentralWidget(scroll);
}

void frmMain::BuildMenus(std::function<void()> showAbout) {
    menuBar()->setFont(platform::SansSerif(9));
    AddMenu(*this, "mnuFile", "&File",
            {{"mnuNew", "&New", QKeySequence("Ctrl+N"), [this] { document.mnuNew_Click(); }},
             Separator("mnuSep1"),
             {"mnuOpen", "&Open...", QKeySequence("Ctrl+O"), [this] { document.mnuOpen_Click(); }},
             {"mnuSave", "&Save", QKeySequence("Ctrl+S"), [this] { document.mnuSave_Click(); }},
             {"mnuSaveAs", "Save &As...", {}, [this] { document.mnuSaveAs_Click(); }},
             Separator("mnuSep6"),
             {"mnuExit", "Exit", {}, [this] { mnuExit_Click(); }}});
    AddMenu(*this, "mnuEdit", "&Edit",
            {{"mnuCut", "Cu&t", QKeySequence("Ctrl+X"), [this] { document.mnuCut_Click(); }},
             {"mnuCopy", "&Copy", QKeySequence("Ctrl+C"), [this] { document.mnuCopy_Click(); }},
             {"mnuPaste", "&Paste", QKeySequence("Ctrl+V"), [this] { document.mnuPaste_Click(); }},
             Separator("mnuSep3"),
             {"mnuSelectAll", "&Select All", QKeySequence("Ctrl+A"), [this] { document.mnuSelectAll_Click(); }}});
    QMenu& cpu = AddMenu(*this, "mnuCPU", "&CPU",
                         {{"mnuCompile", "&Assemble", QKeySequence("F4"), [this] { assembleCommand.Assemble(); }},
                          Separator("mnuSep4"),
                          {"mnuRun", "&Run", QKeySequence("F5"), [this] { runCommands.RunProgram(); }},
                          {"mnuSlowRun", "S&low Run", QKeySequence("F3"), [this] { runCommands.cmdSlowRun_Click(); }},
                          {"mnuSingleStep", "&Single Step", QKeySequence("F8"), [this] { runCommands.StepProgram(); }},
                          Separator("mnuSep5"),
                          {"mnuHalt", "&Stop", {}, [this] { runCommands.cmdHalt_Click(); }},
                          {"mnuReset", "&Reset", {}, [this] { runCommands.cmdReset_Click(); }}});
    QMenu& tools =
        AddMenu(*this, "mnuTools", "&Tools",
                {{"mnuCalculator", "C&alculator", {}, [this] { mnuCalculator_Click(); }},
                 {"mnuDelay", "&Delay Designer", {}, [this] { delayDesigner.cmdDelay_Click(); }},
                 {"mnuCodeAssistant", "&Code Assistant", {}, [this] { codeAssistant.cmdCodeAssistant_Click(); }}});
    AddMenu(*this, "mnuMemory", "&Memory",
            {{"mnuMemoryClear", "&Clear", {}, [this] { memoryGrid.cmdClear_Click(); }},
             {"mnuMemoryAdd", "&Add Column", {}, [this] { memoryGrid.cmdAdd_Click(); }},
             {"mnuMemoryRemove", "&Remove Column", {}, [this] { memoryGrid.cmdRemove_Click(); }},
             Separator("mnuSep2"),
             {"mnuLoadData", "&Load Data File", {}, [this] { dataFiles.mnuLoadData_Click(); }},
             {"mnuSaveData", "&Save To Data File...", {}, [this] { dataFiles.mnuSaveData_Click(); }}});
    AddMenuBarCommand(*this, {"mnuAbout", "&About", {}, std::move(showAbout)});

    MirrorButton(cpu, "mnuCompile", buttons.cmdCompile);
    MirrorButton(cpu, "mnuReset", buttons.cmdReset);
    MirrorButton(cpu, "mnuHalt", buttons.cmdHalt);
    MirrorButton(cpu, "mnuRun", buttons.cmdRun);
    MirrorButton(cpu, "mnuSlowRun", buttons.cmdSlowRun);
    MirrorButton(cpu, "mnuSingleStep", buttons.cmdSingleStep);
    MirrorButton(tools, "mnuDelay", buttons.cmdDelay);
    MirrorButton(tools, "mnuCodeAssistant", buttons.cmdCodeAssistant);
    KeepMenuAccessKeys(*menuBar(), client);

    connect(new QShortcut(QKeySequence("F6"), this), &QShortcut::activated, this,
            &frmMain::SwitchBetweenEditorAndControls);
}

// A second call while the save question of the first is open, as at the end of the session, asks no more.
void frmMain::mnuExit_Click() {
    if (!std::exchange(exiting, true)) document.mnuNew_Click();
    SaveColumns(columns);
    endProcess();
}

void frmMain::closeEvent(QCloseEvent* event) {
    event->accept();
    mnuExit_Click();
}

// The keys of the Edit menu belong to the menu wherever the focus is; text controls would answer them themselves.
bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->window() == this && IsEditKey(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::mnuCalculator_Click() {
    const QStringList programs = platform::CalculatorPrograms();
    if (platform::StartAnyProgram(programs)) return;
    platform::ShowMessage(client, "No calculator could be started. Tried: " + programs.join(", ") + ".",
                          platform::ApplicationTitle, platform::Icon::Information);
}

// "[*]" in a path is meant as it stands, and not as the toolkit's place for a mark of its own.
void frmMain::SetTitle(QString title) {
    setWindowTitle(title.replace("[*]", "[*][*]"));
}

// Tab types a tab in the editor, so this key is the way out of it by keyboard, and back.
void frmMain::SwitchBetweenEditorAndControls() {
    if (document.txtCode().hasFocus())
        buttons.cmdCompile.setFocus();
    else
        document.txtCode().setFocus();
}

}  // namespace shell
