#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/** One line of Qt's message channel. */
struct LogLine {
    QtMsgType type;
    QString category;
    QString text;
};

/**
 * Collects every line of Qt's message channel while it lives, instead of printing it; afterwards
 * the handler that was there before is back. One at a time may be alive in a thread's life, or
 * several that end in reverse order: the innermost collects.
 */
class LogCapture {
public:
    LogCapture() : outer(current)
    {
        current = this;
        previous = qInstallMessageHandler(&LogCapture::collect);
    }
    ~LogCapture()
    {
        qInstallMessageHandler(previous);
        current = outer;
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /** The lines so far, oldest first. */
    const QList<LogLine>& lines() const { return collected; }

    /** Their texts alone. */
    QStringList texts() const
    {
        QStringList all;
        for (const LogLine& line : collected)
            all += line.text;
        return all;
    }

    /** Whether every line so far came on the debug channel, in the category "default". */
    bool onlyDefaultDebug() const
    {
        for (const LogLine& line : collected) {
            if (line.type != QtDebugMsg || line.category != QLatin1String("default"))
                return false;
        }
        return true;
    }

private:
    static void collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (current != nullptr)
            current->collected += LogLine{type, QString::fromLatin1(context.category), text};
    }

    inline static LogCapture* current = nullptr;

    LogCapture* outer;
    QtMessageHandler previous = nullptr;
    QList<LogLine> collected;
};
