#include "apps/hxupdate/words/Advice.h"

#include "host/base/PrintableText.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

QString withName(QString text, const QString& productName)
{
    return text.replace(QLatin1String("%1"), hx::printable(productName));
}

} // namespace

Advice translated(const char* context, const AdviceText& text, const QString& productName)
{
    Advice advice;
    advice.title = withName(QCoreApplication::translate(context, text.title), productName);
    advice.sentence = withName(QCoreApplication::translate(context, text.sentence), productName);
    for (const char* step : text.steps) {
        if (step != nullptr)
            advice.steps << QCoreApplication::translate(context, step);
    }
    return advice;
}

} // namespace hxupdate
