/** @file
 * A value, or the problem for which there is none.
 */
#pragma once

#include "host/base/Problem.h"

#include <optional>
#include <utility>

namespace hx {

/** True when there is a value, which `*` and `->` give; else `problem()` says why. */
template <typename T = void>
class [[nodiscard]] Result {
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(Problem problem) : m_problem(std::move(problem)) {}

    explicit operator bool() const { return m_value.has_value(); }
    T& operator*() { return *m_value; }
    const T& operator*() const { return *m_value; }
    T* operator->() { return &*m_value; }
    const T* operator->() const { return &*m_value; }
    const Problem& problem() const { return m_problem; }

private:
    std::optional<T> m_value;
    Problem m_problem;
};

/** Of what is done for its effect alone: true when all of it was done. */
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Problem problem) : m_problem(std::move(problem)) {}

    explicit operator bool() const { return !m_problem; }
    /** of a failure alone */
    const Problem& problem() const { return *m_problem; }

private:
    std::optional<Problem> m_problem;
};

} // namespace hx
