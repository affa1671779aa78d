// Runs the tests of the model in a Qt program that has no screen and no widgets.
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
