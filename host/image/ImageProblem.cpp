#include "host/image/ImageProblem.h"

namespace hx {

QString ImageProblem::line() const
{
    QString place;
    if (message >= 0)
        place = QStringLiteral("message %1").arg(message + 1);
    if (offset >= 0)
        place += QStringLiteral("%1byte %2 of the file")
                     .arg(place.isEmpty() ? QString() : QStringLiteral(", "))
                     .arg(offset);
    const QString head = place.isEmpty() ? QString() : place + QStringLiteral(": ");
    return advice.isEmpty() ? head + text : QStringLiteral("%1%2 %3").arg(head, text, advice);
}

void addProblem(ImageProblems& problems, const ImageProblem& problem)
{
    if (problems.size() + 1 < mostImageProblems)
        problems.push_back(problem);
    else if (problems.size() < mostImageProblems)
        problems.push_back({-1, -1, QStringLiteral("there are more problems than these."),
                            QStringLiteral("Get the update image again.")});
}

} // namespace hx
