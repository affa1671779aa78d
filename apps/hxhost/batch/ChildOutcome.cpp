#include "apps/hxhost/batch/ChildOutcome.h"

#include "apps/hxhost/batch/BatchUnit.h"
#include "apps/hxhost/report/ExitCodeTable.h"

namespace hx::host {

bool hasEndedWith(const ChildResult& result, ExitCode code)
{
    return result.end == ChildResult::End::Regular && result.exitCode == int(code);
}

bool hasProduct(const ChildResult& result)
{
    const QJsonObject identity = result.document.value(QStringLiteral("result"))
                                     .toObject()
                                     .value(QStringLiteral("identity"))
                                     .toObject();
    return identity.value(QStringLiteral("state")) == QLatin1String("good") &&
           !hasEndedWith(result, ExitCode::WrongProduct);
}

QString outcomeOf(const ChildResult& result)
{
    switch (result.end) {
    case ChildResult::End::Crashed:
        return crashedOutcome;
    case ChildResult::End::Hung:
        return hungOutcome;
    case ChildResult::End::NotStarted:
        return exitName(ExitCode::Internal);
    case ChildResult::End::Regular:
        break;
    }
    if (result.exitCode == int(ExitCode::Success))
        return succeededOutcome;
    const QString name = exitName(ExitCode(result.exitCode));
    return name.isEmpty() ? crashedOutcome : name;
}

QString reasonOf(const ChildResult& result)
{
    const QJsonValue what =
        result.document.value(QStringLiteral("error")).toObject().value(QStringLiteral("what"));
    if (what.isString())
        return what.toString();
    if (hasEndedWith(result, ExitCode::Interrupted))
        return QStringLiteral("it was stopped before a port was open");
    if (result.end == ChildResult::End::Hung)
        return QStringLiteral("its process said nothing for too long and was ended");
    return outcomeOf(result) == succeededOutcome ? QString() : result.lastWords;
}

} // namespace hx::host
