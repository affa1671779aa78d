// A model on test ports, with one image, driven step by step.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"

#include "tests/host/ImageSamples.h"
#include "tests/host/TestFiles.h"
#include "tests/hxupdate/TestPorts.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <functional>

// What the model asked for, counted.
struct SleepLog {
    std::atomic<int> held{0};
    std::atomic<int> released{0};
    std::atomic<bool> isThere{true};
    ThreadLog threads;
};

const QString productPort = QStringLiteral("alsa:Valdrin Update 20:0");

// Runs events until `holds`; false when that took longer than any test may.
bool waitUntil(const std::function<bool()>& holds);

hx::sim::FaultPlan faults(const QStringList& texts);

class Bench {
public:
    // Without a product; `plugin` is a file or a folder.
    explicit Bench(const QString& plugin = QStringLiteral(HX_PLUGIN_FILE));

    // Looks, and waits until what is there has been found.
    void look();
    bool isAt(hxupdate::Step step);

    // From the start, with one product on its port, to this step: Updating after two messages of
    // the image, Verifying after all of them. There the transfer waits.
    void goTo(hxupdate::Step step);

    // Lets a transfer that waits go on, to the verdict.
    void finish();

    QString image(const QString& version = QStringLiteral("1.0.2.4"), int size = 300);

    TestFiles files;
    TestPorts* ports; // owned by the model
    std::shared_ptr<TestProduct> product;
    std::shared_ptr<SleepLog> sleep;
    std::unique_ptr<hxupdate::UpdateModel> model;
    QList<hxupdate::Notice> notices;
    QString noticed; // the detail of the last notice
};
