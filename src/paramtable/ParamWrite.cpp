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

ParamKey::ParamKey(const QString &k, const QString &a)
    : koordinate(k.trimmed().toUpper()), achse(a.trimmed())
{
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

QString ParamKey::hashText() const
{
    return text();
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
