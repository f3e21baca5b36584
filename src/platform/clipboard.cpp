#include "platform/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace platform {

namespace {

constexpr auto richTextFormat = "text/rtf";

}  // namespace

QMimeData* MakeRichText(std::u16string_view text) {
    QString content = QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
    auto* data = new QMimeData;
    data->setData(richTextFormat, content.toUtf8());
    data->setText(content.replace("\r\n", "\n"));
    return data;
}

void PutRichText(std::u16string_view text) {
    QGuiApplication::clipboard()->setMimeData(MakeRichText(text));
}

std::u16string ReadRichText() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data == nullptr ? std::u16string() : QString::fromUtf8(data->data(richTextFormat)).toStdU16String();
}

}  // namespace platform
