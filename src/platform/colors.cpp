#include "platform/colors.h"

namespace drivewiz {

namespace {

struct SystemRole
{
    QPalette::ColorGroup group;
    QPalette::ColorRole role;
};

// Palette role for each system colour index; index 25 has no system colour.
constexpr int kSystemColorCount = 31;
constexpr SystemRole kUnknownRole{QPalette::Active, QPalette::NColorRoles};
constexpr SystemRole kSystemRoles[kSystemColorCount] = {
    {QPalette::Active, QPalette::Button},            // clScrollBar
    {QPalette::Active, QPalette::Dark},              // clBackground (desktop)
    {QPalette::Active, QPalette::Highlight},         // clActiveCaption
    {QPalette::Inactive, QPalette::Highlight},       // clInactiveCaption
    {QPalette::Active, QPalette::Window},            // clMenu
    {QPalette::Active, QPalette::Base},              // clWindow
    {QPalette::Active, QPalette::Shadow},            // clWindowFrame
    {QPalette::Active, QPalette::WindowText},        // clMenuText
    {QPalette::Active, QPalette::Text},              // clWindowText
    {QPalette::Active, QPalette::HighlightedText},   // clCaptionText
    {QPalette::Active, QPalette::Window},            // clActiveBorder
    {QPalette::Inactive, QPalette::Window},          // clInactiveBorder
    {QPalette::Active, QPalette::Mid},               // clAppWorkSpace
    {QPalette::Active, QPalette::Highlight},         // clHighlight
    {QPalette::Active, QPalette::HighlightedText},   // clHighlightText
    {QPalette::Active, QPalette::Button},            // clBtnFace
    {QPalette::Active, QPalette::Dark},              // clBtnShadow
    {QPalette::Disabled, QPalette::Text},            // clGrayText
    {QPalette::Active, QPalette::ButtonText},        // clBtnText
    {QPalette::Inactive, QPalette::HighlightedText}, // clInactiveCaptionText
    {QPalette::Active, QPalette::Light},             // clBtnHighlight
    {QPalette::Active, QPalette::Shadow},            // cl3DDkShadow
    {QPalette::Active, QPalette::Midlight},          // cl3DLight
    {QPalette::Active, QPalette::ToolTipText},       // clInfoText
    {QPalette::Active, QPalette::ToolTipBase},       // clInfoBk
    kUnknownRole,                                    // 25: not a system colour
    {QPalette::Active, QPalette::Link},              // clHotLight
    {QPalette::Active, QPalette::Highlight},         // clGradientActiveCaption
    {QPalette::Inactive, QPalette::Highlight},       // clGradientInactiveCaption
    {QPalette::Active, QPalette::Highlight},         // clMenuHighlight
    {QPalette::Active, QPalette::Window},            // clMenuBar
};

} // namespace

QColor ColorToQColor(TColor color, const QPalette &pal)
{
    if (color == clNone) return QColor(Qt::transparent);
    if (color == clDefault) return QColor();
    const auto bits = quint32(color);
    if ((bits & 0xFF000000u) == quint32(clSystemColor)) {
        const quint32 index = bits & 0x00FFFFFFu;
        if (index >= quint32(kSystemColorCount)) return QColor();
        const SystemRole r = kSystemRoles[index];
        if (r.role == QPalette::NColorRoles) return QColor();
        return pal.color(r.group, r.role);
    }
    return QColor(int(bits & 0xFF), int((bits >> 8) & 0xFF), int((bits >> 16) & 0xFF));
}

TColor QColorToColor(const QColor &color)
{
    if (!color.isValid()) return clDefault;
    if (color.alpha() == 0) return clNone;
    const QRgb rgb = color.rgb();
    return TColor(quint32(qRed(rgb)) | quint32(qGreen(rgb)) << 8 | quint32(qBlue(rgb)) << 16);
}

} // namespace drivewiz
