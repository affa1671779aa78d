// One run of this program in a process of its own.
#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QProcess>
#include <QTimer>

#include <functional>

namespace hx::host {

struct ChildResult {
    enum class End { Regular, Crashed, Hung, NotStarted };

    End end = End::Regular;
    int exitCode = -1;
    QJsonObject document; // what it printed; empty unless it ended regularly
    QString lastWords;    // its last line that is not progress, else what the system says
    qint64 durationMs = 0;
};

struct ChildHandlers {
    std::function<void(const QJsonObject&)> progressed; // a line of progress
    std::function<void(const ChildResult&)> ended;      // the run may be destroyed in it
};

// The run must say something every `longestSilence` milliseconds, else it is killed. It ends with
// this program, however this ends.
class ChildRun {
public:
    ChildRun(const QString& program, const QStringList& words, int longestSilence);
    ~ChildRun();
    ChildRun(const ChildRun&) = delete;
    ChildRun& operator=(const ChildRun&) = delete;

    void start(const ChildHandlers& handlers);

    // Asks it to stop, as Ctrl-C does.
    void stop() { m_process.closeWriteChannel(); }

private:
    void readProgress();
    void takeLine(const QByteArray& line);
    void giveUp();
    void end(ChildResult::End end);

    QProcess m_process;
    QTimer m_silence;
    QTimer m_telling; // what came of it, from the event loop
    QElapsedTimer m_time;
    QString m_program;
    QStringList m_words;
    ChildHandlers m_handlers;
    ChildResult m_result;
    QString m_lastWords;
    bool m_isHung = false;
    bool m_isOver = false;
};

} // namespace hx::host
