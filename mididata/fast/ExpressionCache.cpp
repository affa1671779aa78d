#include "mididata/fast/ExpressionCache.h"

#include "mididata/HxMidiData.h"
#include "mididata/PatternText.h"
#include "mididata/fast/HexTextWriter.h"
#include "qt/Saturated.h"

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

// An expression, and the text that it was searched in last.
class KeptExpression {
public:
    explicit KeptExpression(const char* pattern)
        : m_pattern(pattern), m_expression(patternExpression(QString::fromLatin1(pattern)))
    {
    }

    bool isOf(const char* pattern) const
    {
        return std::strcmp(m_pattern.constData(), pattern) == 0;
    }

    // The expression holds the text as well, but reads it only while it searches: so a text of the same length is
    // written over the last one. A long text is let go of.
    int find(const HxMidiData& data)
    {
        const int size = saturated(data.bytes.size());
        if (size > longestKept)
            return QRegExp(m_expression).indexIn(data.toString(-1));
        if (m_text.size() != 2 * size)
            m_text = unwrittenText(2 * qint64(size));
        const char* const from = data.bytes.constData();
        writeBytes(charactersOf(m_text), from, from + size);
        return m_expression.indexIn(m_text);
    }

private:
    static constexpr int longestKept = 1024; // bytes

    QByteArray m_pattern;
    QRegExp m_expression;
    QString m_text;
};

// The last expressions of one thread; a new one takes the place of the oldest.
class KeptExpressions {
public:
    KeptExpression& of(const char* pattern)
    {
        for (KeptExpression& kept : m_kept) {
            if (kept.isOf(pattern))
                return kept;
        }
        if (m_kept.size() < mostKept)
            return m_kept.emplace_back(pattern);
        m_oldest = (m_oldest + 1) % mostKept;
        m_kept[m_oldest] = KeptExpression(pattern);
        return m_kept[m_oldest];
    }

private:
    static constexpr std::size_t mostKept = 8;

    std::vector<KeptExpression> m_kept;
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

int findExpression(const char* pattern, const HxMidiData& data)
{
    ThreadsExpressions& all = threadsExpressions();
    return keepsNothing ? KeptExpression(pattern).find(data)
                        : all.ofThisThread().of(pattern).find(data);
}

} // namespace hx
