#include "apps/hxupdate/words/NoticeWords.h"

#include "host/base/PrintableText.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

// In the order of the notices; "%1" is the detail.
const char* const noticeTexts[] = {
    "",
    QT_TRANSLATE_NOOP("NoticeWords", "The product is no longer connected. Connect it again."),
    QT_TRANSLATE_NOOP("NoticeWords", "The product is connected again. The update goes on."),
    QT_TRANSLATE_NOOP("NoticeWords", "The image %1 is kept for the next update."),
    QT_TRANSLATE_NOOP("NoticeWords", "The file %1 cannot be used."),
    QT_TRANSLATE_NOOP("NoticeWords", "No file can be taken while an update runs."),
    QT_TRANSLATE_NOOP(
        "NoticeWords",
        "That is not a file on this computer. Download it first, then drop the file."),
    QT_TRANSLATE_NOOP("NoticeWords", "Drop one file at a time."),
    QT_TRANSLATE_NOOP("NoticeWords", "The trace cannot be read. It is damaged in this line: %1"),
    QT_TRANSLATE_NOOP("NoticeWords", "The record was saved: %1"),
    QT_TRANSLATE_NOOP("NoticeWords", "The record was not saved: %1. Choose another place."),
};

static_assert(sizeof noticeTexts / sizeof noticeTexts[0] == size_t(lastNotice) + 1,
              "every notice has its words");

} // namespace

QString noticeText(Notice notice, const QString& detail)
{
    const QString text = QCoreApplication::translate("NoticeWords", noticeTexts[size_t(notice)]);
    return notice == Notice::None
               ? QString()
               : QString(text).replace(QLatin1String("%1"), hx::printable(detail));
}

} // namespace hxupdate
