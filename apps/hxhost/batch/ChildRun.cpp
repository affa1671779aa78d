#include "apps/hxhost/batch/ChildRun.h"

#include <QJsonDocument>

namespace hx::host {

ChildRun::ChildRun(const QString& program, const QStringList& words, int longestSilence)
    : m_program(program), m_words(words)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(longestSilence);
    m_telling.setSingleShot(true);
}

ChildRun::~ChildRun()
{
    m_process.disconnect();
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void ChildRun::start(const ChildHandlers& handlers)
{
    m_handlers = handlers;
    QObject::connect(&m_process, &QProcess::readyReadStandardError, [this] { readProgress(); });
    QObject::connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                     [this](int, QProcess::ExitStatus status) {
                         const bool isRegular = status == QProcess::NormalExit;
                         end(m_isHung    ? ChildResult::End::Hung
                             : isRegular ? ChildResult::End::Regular
                                         : ChildResult::End::Crashed);
                     });
    QObject::connect(&m_process, &QProcess::errorOccurred, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(ChildResult::End::NotStarted);
    });
    QObject::connect(&m_silence, &QTimer::timeout, [this] { giveUp(); });
    QObject::connect(&m_telling, &QTimer::timeout, [this] {
        const auto ended = m_handlers.ended; // it may destroy this
        const ChildResult result = m_result;
        ended(result);
    });
    m_time.start();
    m_silence.start();
    m_process.start(m_program, m_words);
}

void ChildRun::readProgress()
{
    m_process.setReadChannel(QProcess::StandardError);
    while (m_process.canReadLine())
        takeLine(m_process.readLine().trimmed());
}

void ChildRun::takeLine(const QByteArray& line)
{
    m_silence.start();
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    if (object.contains(QStringLiteral("percent")))
        m_handlers.progressed(object);
    else if (!line.isEmpty())
        m_lastWords = QString::fromUtf8(line);
}

void ChildRun::giveUp()
{
    m_isHung = true;
    m_process.kill();
}

void ChildRun::end(ChildResult::End end)
{
    if (std::exchange(m_isOver, true))
        return;
    m_silence.stop();
    readProgress();
    takeLine(m_process.readAllStandardError().trimmed());
    m_silence.stop();
    m_result.end = end;
    m_result.durationMs = m_time.elapsed();
    if (end == ChildResult::End::Regular) {
        m_result.exitCode = m_process.exitCode();
        m_result.document = QJsonDocument::fromJson(m_process.readAllStandardOutput()).object();
    }
    m_result.lastWords = m_lastWords.isEmpty() ? m_process.errorString() : m_lastWords;
    m_telling.start(0);
}

} // namespace hx::host
