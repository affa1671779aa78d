// A page of lines, boxes and texts, written as SVG. Coordinates are whole pixels, so that the same
// picture is the same bytes everywhere.
#pragma once

#include <QByteArray>
#include <QString>
#include <QXmlStreamWriter>

namespace hx {

class SvgPage {
public:
    enum class Anchor { Start, Middle, End };

    // `about` is the page's title, for those who cannot see it.
    SvgPage(int width, int height, const QString& about);

    // Classes are those of the style sheet in the page's head.
    void line(const char* style, int x1, int y1, int x2, int y2);
    void box(const char* style, int x, int y, int width, int height);
    void text(const char* style, Anchor anchor, int x, int y, const QString& text);

    // A triangle whose tip is at (x, y); `direction` is 1 to the right, -1 to the left.
    void arrowHead(const char* style, int x, int y, int direction);

    // A cross around (x, y).
    void cross(const char* style, int x, int y);

    // Ends the page.
    QByteArray finish();

private:
    void start(const char* element, const char* style);
    void attribute(const char* name, int value);

    QByteArray m_content;
    QXmlStreamWriter m_xml;
};

} // namespace hx
