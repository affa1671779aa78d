#include "host/image/ImageProblems.h"

namespace hx {

QString imageProblemLine(const Problem& problem)
{
    const Place& place = problem.place;
    QString head;
    if (place.message >= 0)
        head = QStringLiteral("message %1").arg(place.message + 1);
    if (place.offset >= 0)
        head += QStringLiteral("%1byte %2 of the file")
                    .arg(head.isEmpty() ? QString() : QStringLiteral(", "))
                    .arg(place.offset);
    if (!head.isEmpty())
        head += QStringLiteral(": ");
    return problem.next.isEmpty() ? head + problem.what
                                  : QStringLiteral("%1%2 %3").arg(head, problem.what, problem.next);
}

void addProblem(ImageProblems& problems, const Place& place, const QString& what,
                const QString& next)
{
    if (problems.size() + 1 < mostImageProblems)
        problems.push_back({ExitCode::ImageRefused, what, {}, next, place});
    else if (problems.size() < mostImageProblems)
        problems.push_back({ExitCode::ImageRefused,
                            QStringLiteral("there are more problems than these."),
                            {},
                            QStringLiteral("Get the update image again."),
                            {}});
}

} // namespace hx
