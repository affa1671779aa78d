// Updates of the simulated product with an image of three data messages.
#pragma once

#include "host/update/UpdateRun.h"
#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

constexpr int codeBytes = 300; // three data messages
constexpr int imageMessages = 5;
constexpr int messagesBefore = 2; // identity and version

inline hx::UpdateResult update(ProductSession& session,
                               const hx::UpdateImage& image = samples::image(codeBytes),
                               const hx::UpdateOptions& options = {})
{
    return hx::runUpdate(session.device(), session.bus, image, options);
}

inline bool holds(const hx::sim::SimulatedProduct& product, const QByteArray& code)
{
    return product.isCodeValid() && product.codeBytes() == code;
}

inline QStringList stepNames(const hx::UpdateResult& result)
{
    QStringList names;
    for (const hx::UpdateStep& step : result.steps)
        names << step.name;
    return names;
}

inline void expectOutcome(const hx::UpdateResult& result, hx::UpdateOutcome outcome)
{
    EXPECT_EQ(hx::updateOutcomeText(result.outcome), hx::updateOutcomeText(outcome))
        << result.reason.toStdString();
    EXPECT_EQ(result.reason.isEmpty(), outcome == hx::UpdateOutcome::Succeeded);
}

// A product that failed or was left in mid-update takes the same update afterwards.
inline void expectRecovers(const hx::sim::SimulatedProduct& product)
{
    ProductSession session(product, {});
    const hx::UpdateResult result = update(session);
    EXPECT_TRUE(result.succeeded()) << result.reason.toStdString();
    EXPECT_TRUE(holds(session.product(), samples::code(codeBytes)));
}
