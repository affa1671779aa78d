// What is wrong with an image, as tests expect it.
#pragma once

#include "host/image/UpdateImage.h"
#include "tests/host/ImageSamples.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

inline QStringList linesOf(const hx::UpdateImage& image)
{
    QStringList lines;
    for (const hx::Problem& problem : image.problems)
        lines << hx::imageProblemLine(problem);
    return lines;
}

inline hx::UpdateImage parsed(const QList<HxMidiData>& messages)
{
    return hx::parseUpdateImage(hx::imageFileOf(messages), samples::product());
}

// Expects one problem with these contents at this place.
inline void expectProblem(const hx::UpdateImage& image, int message, qint64 offset,
                          const char* text)
{
    ASSERT_EQ(image.problems.size(), 1u) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.problems[0].place.message, message);
    EXPECT_EQ(image.problems[0].place.offset, offset);
    EXPECT_EQ(image.problems[0].what, text);
    EXPECT_FALSE(image.problems[0].next.isEmpty());
    EXPECT_FALSE(image.ok());
}

constexpr int dataBytes = 146; // of a full data message
