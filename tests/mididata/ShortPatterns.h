#pragma once

#include <QString>

#include <string>
#include <vector>

/** The items that the exhaustive comparisons make their patterns of. */
inline const std::vector<std::string> shortPatternItems = {"0", "F",        ".",    "..",     "*",
                                                           " ", "[0-9A-F]", "[0F]", "(F0|7)", "XX"};

/** The regular expression that a pattern of such items stands for. */
inline QString expressionOfItems(const std::string& pattern)
{
    QString text = QString::fromStdString(pattern);
    return text.remove(QLatin1Char(' ')).replace(QLatin1String("XX"), QLatin1String(".."));
}

/** Every pattern of up to `most` of the items, the empty one first; their number grows tenfold. */
inline std::vector<std::string> shortPatterns(int most)
{
    std::vector<std::string> patterns = {""};
    for (size_t from = 0; most > 0; --most) {
        const size_t to = patterns.size();
        for (; from < to; ++from) {
            for (const std::string& item : shortPatternItems)
                patterns.push_back(patterns[from] + item);
        }
    }
    return patterns;
}
