// Hands values from one thread to another that looks at the newest one only: however fast they come,
// one look at a time is asked for.
#pragma once

#include <mutex>
#include <optional>
#include <utility>

namespace hxupdate {

template <typename Value>
class Newest {
public:
    // True when the other thread has to be told to take it: nothing waits there yet.
    bool put(const Value& value)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return !std::exchange(m_value, value).has_value();
    }

    // After a put() that was true.
    Value take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return *std::exchange(m_value, std::nullopt);
    }

private:
    std::mutex m_mutex;
    std::optional<Value> m_value;
};

} // namespace hxupdate
