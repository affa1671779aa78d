#include "host/trace/TraceSvg.h"

#include "host/trace/SequenceDrawing.h"
#include "host/trace/SvgPage.h"
#include "host/trace/ThroughputDrawing.h"
#include "host/trace/TraceSummary.h"

namespace hx {

namespace {

constexpr int pageWidth = 1180;
constexpr int margin = 24;
constexpr int titleY = 36;
constexpr int summaryY = 58;
constexpr int drawingY = 84;

QString summaryText(const TraceSummary& summary)
{
    return QStringLiteral("%1 messages sent (%2 bytes, %3 of them again), %4 answers, %5 ignored, "
                          "%6 timeouts; %7 s from the first byte to the last answer")
        .arg(summary.sent)
        .arg(summary.sentBytes)
        .arg(summary.retries)
        .arg(summary.received)
        .arg(summary.ignored)
        .arg(summary.timeouts)
        .arg(QString::number(double(summary.elapsed) / microsecondsPerSecond, 'f', 3));
}

} // namespace

QByteArray traceSvg(const QString& title, const TraceEvents& events)
{
    const std::vector<SequenceRow> rows = sequenceRows(events);
    const Throughput throughput = throughputOf(events);
    const int chartY = drawingY + sequenceHeight(rows) + margin;
    SvgPage page(pageWidth, chartY + throughputHeight(throughput) + margin, title);
    page.text("title", SvgPage::Anchor::Start, margin, titleY, title);
    page.text("small", SvgPage::Anchor::Start, margin, summaryY, summaryText(summarize(events)));
    drawSequence(page, drawingY, rows);
    drawThroughput(page, chartY, throughput);
    return page.finish();
}

} // namespace hx
