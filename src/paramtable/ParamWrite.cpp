// Parameter keys, write origins and the host's answer as text.

#include "paramtable/ParamWrite.h"

#include <QChar>

namespace drivewiz {

namespace {

struct OriginWord
{
    WriteOrigin origin;
    const char *word;
};

constexpr OriginWord kOrigins[] = {
    {WriteOrigin::Typed, "typed"}, {WriteOrigin::Reset, "reset"}, {WriteOrigin::Revert, "revert"},
    {WriteOrigin::Undo, "undo"},   {WriteOrigin::Redo, "redo"},   {WriteOrigin::Apply, "apply"},
    {WriteOrigin::Host, "host"},
};

// Axes 0, 1 and none are the drive's first axis; a table lists a parameter under one
// of them only.
bool firstAxis(const QString &achse)
{
    return achse.isEmpty() || achse == QLatin1String("0") || achse == QLatin1String("1");
}

} // namespace

namespace {

// Trimming and upper-casing copy the text; texts from tables rarely need either.
bool needsTrim(const QString &t)
{
    return !t.isEmpty() && (t.front().unicode() <= u' ' || t.back().unicode() <= u' ' ||
                            t.front().isSpace() || t.back().isSpace());
}

bool hasLower(const QString &t)
{
    for (const QChar c : t) {
        const char16_t u = c.unicode();
        if ((u >= u'a' && u <= u'z') || (u >= 0x80 && c.isLower())) return true;
    }
    return false;
}

} // namespace

ParamKey::ParamKey(const QString &k, const QString &a)
    : koordinate(needsTrim(k) ? k.trimmed() : k), achse(needsTrim(a) ? a.trimmed() : a)
{
    if (hasLower(koordinate)) koordinate = koordinate.toUpper();
}

int ParamKey::axisNumber() const
{
    if (achse.isEmpty()) return 1;
    const char16_t c = achse.at(0).unicode();
    if (achse.size() == 1 && c >= u'0' && c <= u'9') return c == u'0' ? 1 : int(c - u'0');
    bool ok = false;
    const int n = achse.toInt(&ok);
    return !ok ? -1 : n < 1 ? 1 : n;
}

QString ParamKey::text() const
{
    if (firstAxis(achse)) return koordinate;
    return achse + QLatin1Char('.') + koordinate;
}

ParamKey ParamKey::fromText(const QString &text, const QString &defaultAxis)
{
    const QString t = text.trimmed();
    // "2.B33": a digit and a dot before the letter are the axis.
    if (t.size() > 2 && t.at(0).isDigit() && t.at(1) == QLatin1Char('.'))
        return ParamKey(t.mid(2), t.left(1));
    return ParamKey(t, defaultAxis);
}

QString writeOriginKeyword(WriteOrigin origin)
{
    for (const OriginWord &o : kOrigins) {
        if (o.origin == origin) return QLatin1String(o.word);
    }
    return QString();
}

bool writeOriginFromKeyword(const QString &keyword, WriteOrigin &origin)
{
    for (const OriginWord &o : kOrigins) {
        if (keyword == QLatin1String(o.word)) {
            origin = o.origin;
            return true;
        }
    }
    return false;
}

QString ParamWrite::answerText() const
{
    if (answer == kKeptInTable) return QString();
    if (answer == 0) return QStringLiteral("0");
    const QChar c(answer);
    if (answer < 128 && c.isLetter()) return QString(c);
    return QString::number(answer);
}

} // namespace drivewiz
