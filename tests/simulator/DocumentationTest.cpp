// What docs/formats/simulated-product.md says is what the product does.
#include "simulator/FaultPlan.h"
#include "simulator/SimulatedProduct.h"

#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegExp>
#include <QStringList>

namespace hx::sim {

namespace {

QString page()
{
    QFile file(QStringLiteral(HX_DOCS_FOLDER "/formats/simulated-product.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList namesOf(const QString& text, const QString& pattern)
{
    QRegExp rx(pattern);
    QStringList names;
    for (int at = rx.indexIn(text); at >= 0; at = rx.indexIn(text, at + rx.matchedLength()))
        names.append(rx.cap(1));
    return names;
}

} // namespace

TEST(SimulatedProductPage, ShowsTheStateFileOfItsExample)
{
    SimulatedProduct product{valdrin()};
    for (const QByteArray& message : imageOf("123456789", "1024"))
        product.receive(message);
    const QString state = QString::fromLatin1(product.save());
    EXPECT_TRUE(page().contains(QStringLiteral("```\n%1```\n").arg(state)));
    product.damageCode(8);
    const QString change = QString::fromLatin1(product.saveChange(8));
    EXPECT_TRUE(page().contains(QStringLiteral("```\n%1```\n").arg(change)));
}

TEST(SimulatedProductPage, ListsTheFaultsThatThereAre)
{
    const QString table = page().section(QStringLiteral("## Faults"), 1);
    const QStringList listed = namesOf(table, QStringLiteral("\\n\\| ([a-z][a-z-]+)[ :]"));
    EXPECT_EQ(listed.size(), 21);
    EXPECT_EQ(listed, namesOf(QLatin1Char('\n') + faultHelp(), QStringLiteral("\\n([a-z-]+)\\[")));
}

TEST(SimulatedProductPage, ExamplesOfFaultsAreRead)
{
    const QString line = page().section(QStringLiteral("Examples: "), 1);
    const QStringList examples = namesOf(line, QStringLiteral("`([^`]+)`"));
    ASSERT_EQ(examples.size(), 5);
    for (const QString& example : examples) {
        QString error;
        EXPECT_TRUE(parseFault(example, &error).has_value()) << error.toStdString();
    }
}

} // namespace hx::sim
