#include "host/image/FileText.h"

#include "qt/Saturated.h"

namespace hx {

namespace {

constexpr char other = '\xFF';

} // namespace

FileText::FileText(const QByteArray& content) : m_content(content)
{
    const bool isLittle = content.startsWith("\xFF\xFE");
    const bool isBig = content.startsWith("\xFE\xFF");
    const bool hasTwo = content.size() >= 2;
    const bool seemsLittle = hasTwo && content.at(0) != 0 && content.at(1) == 0;
    const bool seemsBig = hasTwo && content.at(0) == 0 && content.at(1) != 0;
    if (content.startsWith("\xEF\xBB\xBF"))
        m_begin = 3;
    else if (isLittle || isBig)
        m_begin = 2;
    if (isLittle || isBig || seemsLittle || seemsBig)
        m_width = 2;
    m_low = isBig || seemsBig ? 1 : 0;
}

int FileText::size() const
{
    return (saturated(m_content.size()) - m_begin + m_width - 1) / m_width;
}

char FileText::at(int index) const
{
    const int begin = int(offsetOf(index));
    if (begin + m_width > m_content.size())
        return other;
    const char character = m_content.at(begin + m_low);
    const bool isWide = m_width == 2 && m_content.at(begin + 1 - m_low) != 0;
    return isWide || quint8(character) >= 0x80 ? other : character;
}

} // namespace hx
