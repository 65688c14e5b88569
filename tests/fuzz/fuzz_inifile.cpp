// INI files: any file loads; values written into it read back as the text written (as
// an INI line holds it: one line, no surrounding blanks), before and after saving and
// loading again, and every other value of the file stays as it was.

#include "fuzz_support.h"

#include "platform/inifile.h"

#include <QFile>
#include <QTemporaryDir>

#include <map>

using namespace drivewiz;

namespace {

// What an INI line can hold of a text.
QString asStored(QString v)
{
    v.replace(u'\r', u' ').replace(u'\n', u' ').replace(QChar(0), u' ');
    qsizetype b = 0, e = v.size();
    while (b < e && (v.at(b) == u' ' || v.at(b) == u'\t'))
        ++b;
    while (e > b && (v.at(e - 1) == u' ' || v.at(e - 1) == u'\t'))
        --e;
    return v.mid(b, e - b);
}

// Names the fuzzer picks from: plain words, as wizards and language files use.
QString name(FuzzedDataProvider &in)
{
    static const char *const names[] = {"ComStr",   "s1", "Wiz1", "FormHeight", "cBtnNext",
                                        "History0", "k",  "K",    "Texte",      "x_1"};
    return QString::fromLatin1(names[in.ConsumeIntegralInRange<size_t>(0, 9)]);
}

using Values = std::map<std::pair<QString, QString>, QString>;

Values everything(const IniFile &ini)
{
    Values v;
    for (const QString &s : ini.sections()) {
        for (const QString &k : ini.keys(s))
            v[{s.toLower(), k.toLower()}] = ini.readString(s, k);
    }
    return v;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    static QTemporaryDir dir(fuzz::scratchFolder());
    const QString path = dir.filePath(QStringLiteral("wiz.cfg"));
    FuzzedDataProvider in(data, size);
    const std::string file = in.ConsumeRandomLengthString(4096);
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly)) return 0;
        f.write(file.data(), qint64(file.size()));
    }
    IniFile ini(path);
    if (!ini.load()) return 0;
    Values expected = everything(ini);
    const int changes = in.ConsumeIntegralInRange(0, 6);
    for (int i = 0; i < changes; ++i) {
        const QString s = name(in), k = name(in);
        if (in.ConsumeIntegralInRange(0, 4) == 0) {
            ini.deleteKey(s, k);
            expected.erase({s.toLower(), k.toLower()});
            continue;
        }
        const QString v = fuzz::text(in, 80);
        ini.writeString(s, k, v);
        FUZZ_CHECK(ini.readString(s, k) == asStored(v), v);
        expected[{s.toLower(), k.toLower()}] = asStored(v);
    }
    FUZZ_CHECK(everything(ini) == expected, QStringLiteral("in memory"));
    if (!ini.save()) return 0;
    IniFile back(path);
    FUZZ_CHECK(back.load(), path);
    const Values got = everything(back);
    for (const auto &[key, value] : expected) {
        const auto it = got.find(key);
        FUZZ_CHECK(it != got.end() && it->second == value,
                   key.first + "/" + key.second + ": \"" + value + "\" read back as \"" +
                       (it == got.end() ? QStringLiteral("(missing)") : it->second) + "\"");
    }
    FUZZ_CHECK(got.size() == expected.size(), QString::number(got.size()));
    return 0;
}
