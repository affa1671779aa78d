// The file that a trace is written to, which may hold the trace of an earlier run.
#pragma once

#include "host/base/Result.h"

#include <QFile>

namespace hx::host {

// What it is given before `start` waits in memory where the file holds something already: that is
// left alone by a run that comes to nothing, and kept beside the new trace by one that goes on.
class TraceOutput final : public QIODevice {
public:
    // Looks whether the file can be written.
    Result<> setUp(const QString& name);

    // From now on the file is written to. What it held becomes NAME.1, what that held NAME.2, and
    // so on. A second call does nothing and ends as the first one.
    Result<> start();

protected:
    qint64 readData(char* bytes, qint64 size) override;
    qint64 writeData(const char* bytes, qint64 size) override;

private:
    bool isWaiting() const { return !m_file.isOpen() && m_started; }

    QString m_name;
    QFile m_file; // open once it is written to
    QByteArray m_waiting;
    Result<> m_started; // good before `start` too
};

} // namespace hx::host
