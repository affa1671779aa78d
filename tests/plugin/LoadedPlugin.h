// The plugin as a host has it: loaded from its library file, reached through DeviceInterface.
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "tests/support/FakeBus.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <QPluginLoader>

#include <gtest/gtest.h>

// Newer Qt keeps a library in memory after unload() unless it is told not to.
class UnloadingLoader : public QPluginLoader {
public:
    explicit UnloadingLoader(const QString& file) : QPluginLoader(file)
    {
        setLoadHints(QLibrary::LoadHints());
    }
};

class LoadedPlugin : public testing::Test {
protected:
    void SetUp() override
    {
        device = qobject_cast<DeviceInterface*>(loader.instance());
        ASSERT_NE(device, nullptr) << loader.errorString().toStdString();
        device->bus = &bus;
    }

    void TearDown() override
    {
        EXPECT_TRUE(log.onlyDefaultDebug());
        EXPECT_TRUE(loader.unload());
    }

    UnloadingLoader loader{QStringLiteral(HX_PLUGIN_FILE)};
    FakeBus bus;
    LogCapture log;
    DeviceInterface* device = nullptr;
};
