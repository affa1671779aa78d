#include "contract/SeparateProcess.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace hx {

namespace {

// An empty line says that the work was done.
const QByteArray endOfWork("\n");

void writeAll(int pipeEnd, const QByteArray& bytes)
{
    for (int at = 0; at < bytes.size();) {
        const ssize_t written = write(pipeEnd, bytes.constData() + at, size_t(bytes.size() - at));
        if (written < 0 && errno != EINTR)
            std::_Exit(EXIT_FAILURE); // nobody is there to listen
        at += written < 0 ? 0 : int(written);
    }
}

// An exception that leaves the work is a crash like any other. Nothing can keep the alarm from a
// loop without end, and it also ends a child whose parent has gone.
[[noreturn]] void runChild(const std::function<void(const SendLine&)>& work, int pipeEnd,
                           unsigned seconds) noexcept
{
    alarm(seconds);
    work([pipeEnd, seconds](const QByteArray& line) {
        writeAll(pipeEnd, line + '\n');
        alarm(seconds);
    });
    writeAll(pipeEnd, endOfWork);
    std::exit(EXIT_SUCCESS);
}

bool receiveLines(int pipeEnd, const SendLine& receive)
{
    bool done = false;
    FILE* const stream = fdopen(pipeEnd, "r");
    char* line = nullptr;
    size_t capacity = 0;
    for (ssize_t size = 0; (size = getline(&line, &capacity, stream)) > 0;) {
        const QByteArray bytes(line, int(size));
        done = bytes == endOfWork;
        if (!done)
            receive(bytes.trimmed());
    }
    std::free(line);
    fclose(stream);
    return done;
}

QString endingText(int status, bool done, unsigned seconds)
{
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return QStringLiteral("it did not return within %1 seconds").arg(seconds);
    if (WIFSIGNALED(status))
        return QStringLiteral("it crashed (%1)")
            .arg(QString::fromLocal8Bit(strsignal(WTERMSIG(status))));
    if (done && WEXITSTATUS(status) == EXIT_SUCCESS)
        return QString();
    return QStringLiteral("it ended the program with exit code %1").arg(WEXITSTATUS(status));
}

} // namespace

QString runSeparately(const std::function<void(const SendLine&)>& work, const SendLine& receive,
                      unsigned seconds)
{
    int ends[2];
    const pid_t child = pipe(ends) == 0 ? fork() : -1;
    if (child < 0)
        throw std::runtime_error(std::string("no process could be made: ") + strerror(errno));
    if (child == 0) {
        close(ends[0]);
        runChild(work, ends[1], seconds);
    }
    close(ends[1]);
    const bool done = receiveLines(ends[0], receive);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return endingText(status, done, seconds);
}

} // namespace hx
