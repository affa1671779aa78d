#include "mididata/fast/ExpressionCache.h"

#include "mididata/PatternText.h"

#include <QByteArray>
#include <QRegExp>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <mutex>
#include <vector>

#include <pthread.h>

namespace hx {

namespace {

// The last expressions of one thread; a new one takes the place of the oldest.
class KeptExpressions {
public:
    const QRegExp& of(const char* pattern)
    {
        for (const Kept& kept : m_kept) {
            if (std::strcmp(kept.pattern.constData(), pattern) == 0)
                return kept.expression;
        }
        Kept kept = {QByteArray(pattern), patternExpression(QString::fromLatin1(pattern))};
        if (m_kept.size() < mostKept) {
            m_kept.push_back(std::move(kept));
            return m_kept.back().expression;
        }
        m_oldest = (m_oldest + 1) % mostKept;
        m_kept[m_oldest] = std::move(kept);
        return m_kept[m_oldest].expression;
    }

private:
    static constexpr std::size_t mostKept = 8;

    struct Kept {
        QByteArray pattern;
        QRegExp expression;
    };

    std::vector<Kept> m_kept;
    std::size_t m_oldest = mostKept - 1;
};

// Whether nothing is kept: no more, once the library is being unloaded, or not at all.
std::atomic<bool> keepsNothing = false;

// Those of all threads. A thread's are deleted when it ends, what is left when the library is unloaded.
class ThreadsExpressions {
public:
    ThreadsExpressions() { keepsNothing = pthread_key_create(&m_key, deleteOne) != 0; }

    ~ThreadsExpressions()
    {
        if (!keepsNothing.exchange(true))
            pthread_key_delete(m_key);
    }

    ThreadsExpressions(const ThreadsExpressions&) = delete;
    ThreadsExpressions& operator=(const ThreadsExpressions&) = delete;

    KeptExpressions& ofThisThread()
    {
        if (void* const own = pthread_getspecific(m_key))
            return *static_cast<KeptExpressions*>(own);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_all.push_back(std::make_unique<KeptExpressions>());
        pthread_setspecific(m_key, m_all.back().get());
        return *m_all.back();
    }

private:
    static void deleteOne(void* one);

    pthread_key_t m_key = 0;
    std::mutex m_mutex;
    std::vector<std::unique_ptr<KeptExpressions>> m_all;
};

ThreadsExpressions& threadsExpressions()
{
    static ThreadsExpressions all;
    return all;
}

void ThreadsExpressions::deleteOne(void* one)
{
    ThreadsExpressions& all = threadsExpressions();
    const std::lock_guard<std::mutex> lock(all.m_mutex);
    const auto place = std::find_if(all.m_all.begin(), all.m_all.end(),
                                    [one](const auto& kept) { return kept.get() == one; });
    if (place != all.m_all.end())
        all.m_all.erase(place);
}

} // namespace

int findExpression(const char* pattern, const QString& text)
{
    ThreadsExpressions& all = threadsExpressions();
    return keepsNothing ? patternExpression(QString::fromLatin1(pattern)).indexIn(text)
                        : all.ofThisThread().of(pattern).indexIn(text);
}

} // namespace hx
