#ifndef DRIVEWIZ_PLATFORM_COLORS_H
#define DRIVEWIZ_PLATFORM_COLORS_H

#include "drivewiz_global.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

namespace drivewiz {

/// A colour as the form files and colour properties hold it: 0x00BBGGRR for an RGB
/// colour, 0xFF000000 | index for a system colour, or one of clNone and clDefault.
using TColor = qint32;

inline constexpr TColor clBlack = 0x000000;
inline constexpr TColor clMaroon = 0x000080;
inline constexpr TColor clGreen = 0x008000;
inline constexpr TColor clOlive = 0x008080;
inline constexpr TColor clNavy = 0x800000;
inline constexpr TColor clPurple = 0x800080;
inline constexpr TColor clTeal = 0x808000;
inline constexpr TColor clGray = 0x808080;
inline constexpr TColor clSilver = 0xC0C0C0;
inline constexpr TColor clRed = 0x0000FF;
inline constexpr TColor clLime = 0x00FF00;
inline constexpr TColor clYellow = 0x00FFFF;
inline constexpr TColor clBlue = 0xFF0000;
inline constexpr TColor clFuchsia = 0xFF00FF;
inline constexpr TColor clAqua = 0xFFFF00;
inline constexpr TColor clWhite = 0xFFFFFF;
inline constexpr TColor clMoneyGreen = 0xC0DCC0;
inline constexpr TColor clSkyBlue = 0xF0CAA6;
inline constexpr TColor clCream = 0xF0FBFF;
inline constexpr TColor clMedGray = 0xA4A0A0;

/// Marks a system colour; the low byte is the system colour index.
inline constexpr TColor clSystemColor = TColor(0xFF000000u);

inline constexpr TColor clScrollBar = clSystemColor | 0;
inline constexpr TColor clBackground = clSystemColor | 1;
inline constexpr TColor clActiveCaption = clSystemColor | 2;
inline constexpr TColor clInactiveCaption = clSystemColor | 3;
inline constexpr TColor clMenu = clSystemColor | 4;
inline constexpr TColor clWindow = clSystemColor | 5;
inline constexpr TColor clWindowFrame = clSystemColor | 6;
inline constexpr TColor clMenuText = clSystemColor | 7;
inline constexpr TColor clWindowText = clSystemColor | 8;
inline constexpr TColor clCaptionText = clSystemColor | 9;
inline constexpr TColor clActiveBorder = clSystemColor | 10;
inline constexpr TColor clInactiveBorder = clSystemColor | 11;
inline constexpr TColor clAppWorkSpace = clSystemColor | 12;
inline constexpr TColor clHighlight = clSystemColor | 13;
inline constexpr TColor clHighlightText = clSystemColor | 14;
inline constexpr TColor clBtnFace = clSystemColor | 15;
inline constexpr TColor clBtnShadow = clSystemColor | 16;
inline constexpr TColor clGrayText = clSystemColor | 17;
inline constexpr TColor clBtnText = clSystemColor | 18;
inline constexpr TColor clInactiveCaptionText = clSystemColor | 19;
inline constexpr TColor clBtnHighlight = clSystemColor | 20;
inline constexpr TColor cl3DDkShadow = clSystemColor | 21;
inline constexpr TColor cl3DLight = clSystemColor | 22;
inline constexpr TColor clInfoText = clSystemColor | 23;
inline constexpr TColor clInfoBk = clSystemColor | 24;
inline constexpr TColor clHotLight = clSystemColor | 26;
inline constexpr TColor clGradientActiveCaption = clSystemColor | 27;
inline constexpr TColor clGradientInactiveCaption = clSystemColor | 28;
inline constexpr TColor clMenuHighlight = clSystemColor | 29;
inline constexpr TColor clMenuBar = clSystemColor | 30;

/// No colour: paint nothing.
inline constexpr TColor clNone = 0x1FFFFFFF;
/// The control's own default colour.
inline constexpr TColor clDefault = 0x20000000;

/// The QColor of a TColor. System colours come from the palette (active group, unless
/// the colour is an inactive one): clWindow is the edit background (Base), clWindowText
/// its text (Text), clBtnFace/clBtnText the Button roles, clInfoBk/clInfoText the tool
/// tip roles, clHighlight/clHighlightText the selection, clGrayText the disabled text,
/// the 3D shades Light, Midlight, Dark and Shadow. clNone gives Qt::transparent;
/// clDefault and unknown system indexes give an invalid QColor (keep your default).
/// Other values use their low 24 bits as RGB.
DRIVEWIZ_EXPORT QColor ColorToQColor(TColor color,
                                     const QPalette &pal = QGuiApplication::palette());

/// The TColor of a QColor: its RGB as 0x00BBGGRR (alpha is dropped); a fully
/// transparent colour gives clNone and an invalid one clDefault.
DRIVEWIZ_EXPORT TColor QColorToColor(const QColor &color);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_COLORS_H
