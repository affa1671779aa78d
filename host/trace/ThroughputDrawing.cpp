#include "host/trace/ThroughputDrawing.h"

#include "host/base/WirePace.h"

#include <algorithm>
#include <cmath>

namespace hx {

namespace {

using Anchor = SvgPage::Anchor;

constexpr int left = 96;
constexpr int right = 1156;
constexpr int headHeight = 34;
constexpr int chartHeight = 180;
constexpr int footHeight = 44;
constexpr int labelGap = 6;
constexpr int mostTimes = 10;

// 1, 2 or 5 times a power of ten, so that at most `most` of them reach `reach`.
double roundStep(double reach, int most)
{
    const double least = reach / most;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double step : {power, 2 * power, 5 * power}) {
        if (step >= least)
            return step;
    }
    return 10 * power;
}

class Chart {
public:
    Chart(SvgPage& page, int y, const Throughput& throughput)
        : m_page(page), m_throughput(throughput), m_bottom(y + headHeight + chartHeight),
          m_top(std::max(throughput.highest() * 1.1, double(dinBytesPerSecond) * 1.1))
    {
    }

    void draw();

private:
    int xOf(Microseconds time) const;
    int yOf(double rate) const;
    void drawRates();
    void drawTimes();
    void drawBars();
    void drawWire();
    void drawFaults();

    SvgPage& m_page;
    const Throughput& m_throughput;
    int m_bottom;
    double m_top; // rate at the upper end
};

int Chart::xOf(Microseconds time) const
{
    const double part =
        double(time - m_throughput.start) / double(m_throughput.end() - m_throughput.start);
    return left + int(std::lround(part * (right - left)));
}

int Chart::yOf(double rate) const
{
    return m_bottom - int(std::lround(rate / m_top * chartHeight));
}

void Chart::drawRates()
{
    constexpr int mostRates = 5;
    const double step = roundStep(m_top, mostRates);
    const int count = int(m_top / step);
    for (int i = 0; i <= count; ++i) {
        const double rate = i * step;
        m_page.line("grid", left, yOf(rate), right, yOf(rate));
        m_page.text("small", Anchor::End, left - labelGap, yOf(rate) + 4,
                    QString::number(rate, 'f', 0));
    }
}

void Chart::drawTimes()
{
    constexpr int below = 18;
    const double end = double(m_throughput.end()) / microsecondsPerSecond;
    const double start = double(m_throughput.start) / microsecondsPerSecond;
    const double step = roundStep(end - start, mostTimes);
    const int digits = std::max(0, int(-std::floor(std::log10(step))));
    const auto last = qint64(end / step);
    for (auto count = qint64(std::ceil(start / step)); count <= last; ++count) {
        const double time = double(count) * step;
        const int x = xOf(Microseconds(std::llround(time * microsecondsPerSecond)));
        m_page.line("axis", x, m_bottom, x, m_bottom + labelGap - 1);
        m_page.text("small", Anchor::Middle, x, m_bottom + below,
                    QString::number(time, 'f', digits) + QStringLiteral(" s"));
    }
}

void Chart::drawBars()
{
    for (size_t bin = 0; bin < m_throughput.sent.size(); ++bin) {
        const Microseconds from = m_throughput.start + m_throughput.binWidth * Microseconds(bin);
        const int x = xOf(from);
        const int width = xOf(from + m_throughput.binWidth) - x;
        const int sentY = yOf(m_throughput.sent[bin]);
        const int againY = yOf(m_throughput.again[bin]);
        if (sentY < m_bottom)
            m_page.box("sentBar", x, sentY, width, m_bottom - sentY);
        if (againY < m_bottom)
            m_page.box("againBar", x, againY, width, m_bottom - againY);
    }
}

void Chart::drawWire()
{
    const int y = yOf(double(dinBytesPerSecond));
    m_page.line("wire", left, y, right, y);
    m_page.text("small", Anchor::End, right, y - 4,
                QStringLiteral("a DIN MIDI wire takes %1 bytes a second").arg(dinBytesPerSecond));
}

void Chart::drawFaults()
{
    constexpr int above = 8;
    for (const Microseconds time : m_throughput.faults)
        m_page.cross("fault", xOf(time), m_bottom - above);
}

void Chart::draw()
{
    drawRates();
    drawBars();
    drawWire();
    m_page.line("axis", left, m_bottom, right, m_bottom);
    drawTimes();
    drawFaults();
}

} // namespace

int throughputHeight(const Throughput& throughput)
{
    return throughput.sent.empty() ? 0 : headHeight + chartHeight + footHeight;
}

void drawThroughput(SvgPage& page, int y, const Throughput& throughput)
{
    if (throughput.sent.empty())
        return;
    const QString bin =
        QString::number(double(throughput.binWidth) / double(microsecondsPerMillisecond));
    page.text("heading", Anchor::Start, left, y + 12, QStringLiteral("Throughput"));
    page.text("small", Anchor::Start, left + 100, y + 12,
              QStringLiteral("bytes sent a second, in steps of %1 ms; orange: sent again; red "
                             "cross: no answer, or one that refuses")
                  .arg(bin));
    Chart(page, y, throughput).draw();
}

} // namespace hx
