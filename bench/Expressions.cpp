#include "bench/Expressions.h"

#ifdef HXBENCH_PCRE2
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>
#endif

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace hxbench {

std::string expressionText(const std::string& pattern)
{
    std::string text;
    for (const char c : pattern)
        text += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

#ifdef HXBENCH_PCRE2

struct JitExpression::Compiled {
    Compiled(const std::string& text, uint32_t options)
    {
        int error = 0;
        PCRE2_SIZE offset = 0;
        code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), options,
                             &error, &offset, nullptr);
        if (code == nullptr || pcre2_jit_compile(code, PCRE2_JIT_COMPLETE) != 0) {
            std::fprintf(stderr, "hxbench: PCRE2 cannot compile \"%s\" (error %d)\n", text.c_str(),
                         error);
            std::exit(1);
        }
        data = pcre2_match_data_create_from_pattern(code, nullptr);
    }
    ~Compiled()
    {
        pcre2_match_data_free(data);
        pcre2_code_free(code);
    }
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;

    bool fits(const QByteArray& text) const
    {
        const auto* const subject = reinterpret_cast<PCRE2_SPTR>(text.constData());
        return pcre2_jit_match(code, subject, static_cast<PCRE2_SIZE>(text.size()), 0, 0, data,
                               nullptr) >= 0;
    }

    pcre2_code* code;
    pcre2_match_data* data;
};

JitExpression::JitExpression(const std::string& pattern)
    : anchored(std::make_unique<Compiled>(expressionText(pattern), PCRE2_ANCHORED)),
      free(std::make_unique<Compiled>(expressionText(pattern), 0))
{
}

JitExpression::~JitExpression() = default;

bool JitExpression::fitsStart(const QByteArray& text) const
{
    return anchored->fits(text);
}

bool JitExpression::fitsAnywhere(const QByteArray& text) const
{
    return free->fits(text);
}

#endif

} // namespace hxbench
