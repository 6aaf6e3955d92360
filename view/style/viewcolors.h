#pragma once

#include <QColor>
#include <QPalette>

/** Colours of the view's own light surfaces. */
namespace ViewColors {

constexpr QColor text(0x1B, 0x21, 0x40);
constexpr QColor secondaryText(0x5B, 0x62, 0x85);
constexpr QColor hairline(0xC9, 0xCC, 0xE3);
constexpr QColor card(0xFF, 0xFF, 0xFF);
constexpr QColor band(0xEC, 0xEE, 0xFA);
constexpr QColor alternateRow(0xDD, 0xDF, 0xF5);
constexpr QColor selection(0x29, 0x47, 0xC6);
constexpr QColor normal(0x1E, 0x7F, 0x3C);
constexpr QColor attention(0x9A, 0x62, 0x00);
constexpr QColor alarm(0xB3, 0x26, 0x1E);

} // namespace ViewColors

/** `palette` with dark text for the view's white surfaces, readable on any desktop. */
inline QPalette whitePalette(QPalette palette)
{
    const auto setText = [&palette](QPalette::ColorGroup group, const QColor &color) {
        palette.setColor(group, QPalette::Text, color);
        palette.setColor(group, QPalette::WindowText, color);
        palette.setColor(group, QPalette::ButtonText, color);
    };
    setText(QPalette::Active, ViewColors::text);
    setText(QPalette::Inactive, ViewColors::text);
    setText(QPalette::Disabled, ViewColors::secondaryText);
    palette.setColor(QPalette::Window, ViewColors::card);
    palette.setColor(QPalette::Base, ViewColors::card);
    palette.setColor(QPalette::Button, ViewColors::card);
    palette.setColor(QPalette::AlternateBase, ViewColors::alternateRow);
    palette.setColor(QPalette::Highlight, ViewColors::selection);
    palette.setColor(QPalette::HighlightedText, ViewColors::card);
    return palette;
}
