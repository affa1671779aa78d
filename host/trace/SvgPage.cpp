#include "host/trace/SvgPage.h"

namespace hx {

namespace {

constexpr int arrowLength = 8;
constexpr int arrowHalfWidth = 4;
constexpr int crossHalfWidth = 5;

// Colours that stay apart for those who do not tell red from green.
constexpr char styleSheet[] = R"(
text { font-family: "DejaVu Sans", Verdana, sans-serif; font-size: 12px; fill: #1b1b1b }
.page { fill: #ffffff }
.title { font-size: 16px; font-weight: bold }
.heading { font-size: 13px; font-weight: bold }
.small, .note { font-size: 11px; fill: #555555 }
.life { stroke: #999999; stroke-width: 2 }
.head { fill: #eef2f6; stroke: #666666 }
.message, .reply { stroke: #0b5394; stroke-width: 1.5 }
.ignored { stroke: #777777; stroke-width: 1.5; stroke-dasharray: 5 4 }
.retry { stroke: #b45f06; stroke-width: 2 }
.fault { stroke: #c00000; stroke-width: 2 }
text.retry { stroke: none; fill: #b45f06; font-weight: bold }
text.fault { stroke: none; fill: #c00000; font-weight: bold }
text.ignored { stroke: none; fill: #555555 }
.messageHead, .replyHead { fill: #0b5394 }
.retryHead { fill: #b45f06 }
.faultHead { fill: #c00000 }
.ignoredHead { fill: #777777 }
.omission { fill: #f3f3f3; stroke: #bbbbbb; stroke-dasharray: 2 3 }
.axis { stroke: #666666 }
.grid { stroke: #e0e0e0 }
.wire { stroke: #38761d; stroke-dasharray: 6 3 }
.sentBar { fill: #6fa8dc }
.againBar { fill: #e69138 }
)";

QString anchorWord(SvgPage::Anchor anchor)
{
    if (anchor == SvgPage::Anchor::Start)
        return QStringLiteral("start");
    return anchor == SvgPage::Anchor::Middle ? QStringLiteral("middle") : QStringLiteral("end");
}

} // namespace

SvgPage::SvgPage(int width, int height, const QString& about) : m_xml(&m_content)
{
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(1);
    m_xml.writeStartElement(QStringLiteral("svg"));
    m_xml.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    m_xml.writeAttribute(QStringLiteral("viewBox"),
                         QStringLiteral("0 0 %1 %2").arg(width).arg(height));
    attribute("width", width);
    attribute("height", height);
    m_xml.writeTextElement(QStringLiteral("title"), about);
    m_xml.writeTextElement(QStringLiteral("style"), QString::fromLatin1(styleSheet));
    box("page", 0, 0, width, height);
}

void SvgPage::line(const char* style, int x1, int y1, int x2, int y2)
{
    start("line", style);
    attribute("x1", x1);
    attribute("y1", y1);
    attribute("x2", x2);
    attribute("y2", y2);
    m_xml.writeEndElement();
}

void SvgPage::box(const char* style, int x, int y, int width, int height)
{
    start("rect", style);
    attribute("x", x);
    attribute("y", y);
    attribute("width", width);
    attribute("height", height);
    m_xml.writeEndElement();
}

void SvgPage::text(const char* style, Anchor anchor, int x, int y, const QString& text)
{
    start("text", style);
    attribute("x", x);
    attribute("y", y);
    m_xml.writeAttribute(QStringLiteral("text-anchor"), anchorWord(anchor));
    m_xml.writeCharacters(text);
    m_xml.writeEndElement();
}

void SvgPage::arrowHead(const char* style, int x, int y, int direction)
{
    const int back = x - direction * arrowLength;
    start("path", style);
    m_xml.writeAttribute(QStringLiteral("d"), QStringLiteral("M%1 %2L%3 %4L%3 %5Z")
                                                  .arg(x)
                                                  .arg(y)
                                                  .arg(back)
                                                  .arg(y - arrowHalfWidth)
                                                  .arg(y + arrowHalfWidth));
    m_xml.writeEndElement();
}

void SvgPage::cross(const char* style, int x, int y)
{
    line(style, x - crossHalfWidth, y - crossHalfWidth, x + crossHalfWidth, y + crossHalfWidth);
    line(style, x - crossHalfWidth, y + crossHalfWidth, x + crossHalfWidth, y - crossHalfWidth);
}

QByteArray SvgPage::finish()
{
    m_xml.writeEndElement();
    return m_content + '\n';
}

void SvgPage::start(const char* element, const char* style)
{
    m_xml.writeStartElement(QString::fromLatin1(element));
    m_xml.writeAttribute(QStringLiteral("class"), QString::fromLatin1(style));
}

void SvgPage::attribute(const char* name, int value)
{
    m_xml.writeAttribute(QString::fromLatin1(name), QString::number(value));
}

} // namespace hx
