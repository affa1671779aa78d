#pragma once

#include <QByteArray>

#include <memory>
#include <string>

namespace hxbench {

/** The pattern in the form that every expression engine reads: upper case, "XX" and "VV" kept. */
std::string expressionText(const std::string& pattern);

#ifdef HXBENCH_PCRE2
/** An expression compiled to machine code beforehand, searched in hex text from its first digit on.
 */
class JitExpression {
public:
    explicit JitExpression(const std::string& pattern);
    ~JitExpression();
    JitExpression(const JitExpression&) = delete;
    JitExpression& operator=(const JitExpression&) = delete;

    bool fitsStart(const QByteArray& text) const;
    bool fitsAnywhere(const QByteArray& text) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> anchored;
    std::unique_ptr<Compiled> free;
};
#endif

} // namespace hxbench
