#include "shell/frm_splash.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QUrl>

#include "platform/dialogs.h"
#include "platform/fonts.h"
#include "platform/keys.h"
#include "platform/palette.h"
#include "platform/twips.h"
#include "shell/documents.h"

namespace shell {

namespace {

constexpr int clientWidth = 6750;
constexpr int clientHeight = 4515;
constexpr int showMilliseconds = 2500;
constexpr int frameWidth = 5;  // pixels

// The user guide that was installed beside the program, or else the page on the web.
QUrl PageAddress() {
    const QFileInfo guide(DocumentPath("user-guide.html"));
    return guide.isFile() ? QUrl::fromLocalFile(guide.canonicalFilePath()) : QUrl("https://www.velmora.example");
}

// As it fits into a width in pixels: the end of a path says more than its middle.
QString ShownAddress(const QUrl& address, const QFont& font, int width) {
    const QString text = address.isLocalFile() ? QDir::toNativeSeparators(address.toLocalFile()) : address.toString();
    return QFontMetrics(font).elidedText(text, Qt::ElideMiddle, width);
}

// The blue share grows from 100 at the top to 200 at the bottom.
void PaintGradient(QPainter& painter) {
    constexpr int step = 10;
    for (int y = 0; y <= clientHeight; y += step) {
        const int blue = qRound(static_cast<double>(y) / clientHeight * 100 + 100);
        painter.fillRect(0, y, clientWidth, 2 * step, QColor(250, 250, blue));  // no gap on a scaled screen
    }
}

}  // namespace

frmSplash::frmSplash() : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint) {
    using platform::CourierNew;
    using platform::Verdana;

    setObjectName("frmSplash");
    setAccessibleName("About Velmora");
    setFixedSize(platform::Pixels(clientWidth), platform::Pixels(clientHeight));
    setMouseTracking(true);

    constexpr int nameLeft = 240;
    const QString productName = QCoreApplication::applicationName();
    setWindowTitle(productName);
    const int nameWidth = platform::Pixels(clientWidth - 3 * nameLeft);
    AddLabel("Label1", productName, platform::Display(75, productName, nameWidth), QColor(0, 0, 255), nameLeft, 360);
    AddLabel("Label3", "Version " VELMORA_VERSION, Verdana(12, QFont::Bold), QColor(192, 0, 192), 4680, 2040);
    Label7 = &AddLabel("Label7", "Free software under the MIT licence", Verdana(9.75), QColor(64, 0, 0), 2640, 2760);
    AddLabel("Label2", "The Velmora developers", Verdana(11.25, QFont::Bold), QColor(0, 128, 0), 3120, 3360);
    AddLabel("Label4", "mail: hello@velmora.example", CourierNew(9.75), QColor(192, 0, 0), 3240, 3840);
    Label6 = &AddLabel("Label6", "webpage:", CourierNew(9.75), QColor(192, 0, 0), 960, 4080);
    QFont link = CourierNew(9.75);
    link.setUnderline(true);
    constexpr int linkLeft = 2040;
    const QString address = ShownAddress(PageAddress(), link, platform::Pixels(6720 - linkLeft) - frameWidth);
    Label5 = &AddLabel("Label5", address, link, QColor(0, 0, 255), linkLeft, 4080);

    Timer1.setSingleShot(true);
    connect(&Timer1, &QTimer::timeout, this, &QWidget::hide);
    Timer1.start(showMilliseconds);
}

void frmSplash::ShowAtStart() {
    move(screen()->availableGeometry().center() - rect().center());
    setAttribute(Qt::WA_ShowWithoutActivating, true);
    show();
    raise();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void frmSplash::ShowAbout() {
    show();
    raise();
    activateWindow();
}

// All labels are transparent to the mouse as well: what a click means is decided in one place.
QLabel& frmSplash::AddLabel(const QString& name, const QString& text, const QFont& font, const QColor& colour, int left,
                            int top) {
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    platform::SetColour(*label, QPalette::WindowText, colour);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->move(platform::Pixels(left), platform::Pixels(top));
    return *label;
}

void frmSplash::paintEvent(QPaintEvent*) {
    constexpr double pixelsPerTwip = 1.0 / 15.0;
    QPainter painter(this);
    painter.save();
    painter.scale(pixelsPerTwip, pixelsPerTwip);
    PaintGradient(painter);
    painter.restore();
    const QRectF frame(0, 0, platform::Pixels(6720), platform::Pixels(4440));
    constexpr double inset = frameWidth / 2.0;
    painter.setPen(QPen(Qt::black, frameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(frame.adjusted(inset, inset, -inset, -inset));
}

// A click on the link opens the page, one on the two plain labels does nothing, any other hides the box.
void frmSplash::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    if (event->button() != Qt::LeftButton || !rect().contains(at)) return;
    if (Label5->geometry().contains(at))
        Label5_Click();
    else if (!Label6->geometry().contains(at) && !Label7->geometry().contains(at))
        hide();
}

// The pointer keeps its new shape for the whole window.
void frmSplash::mouseMoveEvent(QMouseEvent* event) {
    if (Label5->geometry().contains(event->position().toPoint())) setCursor(Qt::UpArrowCursor);
}

// Any character key hides the box; Delete, arrows and function keys are not characters.
void frmSplash::keyPressEvent(QKeyEvent* event) {
    if (platform::IsCharacterKey(*event)) hide();
}

void frmSplash::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
}

void frmSplash::Label5_Click() {
    const QUrl address = PageAddress();
    if (QDesktopServices::openUrl(address)) return;
    platform::ShowMessage(*this, "The page could not be opened in a browser. Its address is " + address.toString(),
                          QMessageBox::Information);
}

}  // namespace shell
