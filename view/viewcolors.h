#pragma once

#include <QColor>
#include <QPalette>

/** Colours of the view's own light surfaces. */
namespace ViewColors {

constexpr QColor Text(0x1B, 0x21, 0x40);
constexpr QColor SecondaryText(0x5B, 0x62, 0x85);
constexpr QColor Hairline(0xC9, 0xCC, 0xE3);
constexpr QColor Card(0xFF, 0xFF, 0xFF);
constexpr QColor Band(0xEC, 0xEE, 0xFA);
constexpr QColor AlternateRow(0xDD, 0xDF, 0xF5);
constexpr QColor Selection(0x29, 0x47, 0xC6);

} // namespace ViewColors

/** `palette` with dark text for the view's white surfaces, readable on any desktop. */
inline QPalette whitePalette(QPalette palette)
{
    const auto setText = [&palette](QPalette::ColorGroup group, const QColor &color) {
        palette.setColor(group, QPalette::Text, color);
        palette.setColor(group, QPalette::WindowText, color);
        palette.setColor(group, QPalette::ButtonText, color);
    };
    setText(QPalette::Active, ViewColors::Text);
    setText(QPalette::Inactive, ViewColors::Text);
    setText(QPalette::Disabled, ViewColors::SecondaryText);
    palette.setColor(QPalette::Window, ViewColors::Card);
    palette.setColor(QPalette::Base, ViewColors::Card);
    palette.setColor(QPalette::Button, ViewColors::Card);
    palette.setColor(QPalette::AlternateBase, ViewColors::AlternateRow);
    palette.setColor(QPalette::Highlight, ViewColors::Selection);
    palette.setColor(QPalette::HighlightedText, ViewColors::Card);
    return palette;
}
