// What is said of a state: a title, one sentence, and what to do, step by step.
#pragma once

#include <QStringList>

#include <array>

namespace hxupdate {

struct Advice {
    QString title;
    QString sentence;
    QStringList steps;
};

constexpr size_t mostSteps = 3;

// The same in English, as it is in a table; what is not there is null. "%1" in the title and
// the sentence is the product's name.
struct AdviceText {
    const char* title;
    const char* sentence;
    std::array<const char*, mostSteps> steps;
};

// In the user's language. `context` is the one that the texts are translated in.
Advice translated(const char* context, const AdviceText& text, const QString& productName);

} // namespace hxupdate
