// The kinds of code image, as hosts and plugins may write them.
#include "deviceinterface/FwUpdateProtocol.h"

#include <QVariant>

#include <gtest/gtest.h>

#include <type_traits>

static_assert(std::is_same<std::underlying_type<CodeType>::type, int>::value, "an int inside");
static_assert(std::is_convertible<CodeType, int>::value, "an int without a cast");

TEST(CodeType, bothSpellingsNameTheSameKind)
{
    EXPECT_EQ(Unknown, CodeType::Unknown);
    EXPECT_EQ(Fwu, CodeType::Fwu);
    EXPECT_EQ(Fwd, CodeType::Fwd);
}

TEST(CodeType, isTakenByIntAndVariant)
{
    const int number = Fwd;
    EXPECT_EQ(number, 2);
    const QVariant variant(CodeType::Fwu);
    EXPECT_EQ(variant, QVariant(1));
    EXPECT_EQ(QVariant(Unknown).toInt(), 0);
}
