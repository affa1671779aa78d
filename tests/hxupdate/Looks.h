// What makes the same window look otherwise: its language's length, its fonts, its colours.
#pragma once

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QTranslator>

// As long as it lives texts are 40 % longer than in English, with their places and mnemonics kept.
class LongTexts final : public QTranslator {
public:
    LongTexts() { QCoreApplication::installTranslator(this); }
    ~LongTexts() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char*, const char* text, const char*, int) const override
    {
        const QString english = QString::fromUtf8(text);
        return english + QString(" x").repeated(english.size() / 5);
    }
    bool isEmpty() const override { return false; }
};

// As long as it lives fonts are twice as large.
class LargeFont {
public:
    LargeFont() : m_font(QApplication::font())
    {
        QFont large = m_font;
        large.setPointSizeF(m_font.pointSizeF() * 2);
        QApplication::setFont(large);
    }
    ~LargeFont() { QApplication::setFont(m_font); }
    LargeFont(const LargeFont&) = delete;
    LargeFont& operator=(const LargeFont&) = delete;

private:
    QFont m_font;
};

// As long as it lives there is white on black, and nothing between.
class HighContrast {
public:
    HighContrast() : m_palette(QApplication::palette())
    {
        QPalette palette(Qt::black, Qt::black);
        for (const QPalette::ColorRole text :
             {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(text, Qt::white);
        palette.setColor(QPalette::Base, Qt::black);
        QApplication::setPalette(palette);
    }
    ~HighContrast() { QApplication::setPalette(m_palette); }
    HighContrast(const HighContrast&) = delete;
    HighContrast& operator=(const HighContrast&) = delete;

private:
    QPalette m_palette;
};
