#ifndef DRIVEWIZ_PLATFORM_INIFILE_P_H
#define DRIVEWIZ_PLATFORM_INIFILE_P_H

// The parsed text of an INI file, with names and values as QString. Internal to IniFile.

#include <SimpleIni.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace drivewiz::detail {

class IniDocument
{
public:
    IniDocument();

    /// Parses the bytes of a file: detects BOM, line ends and encoding.
    static IniDocument parse(QByteArray bytes);
    /// The bytes to write, in the file's encoding and line ends.
    QByteArray render() const;
    /// Changes to UTF-8 when the Windows-1252 bytes would be read back as UTF-8.
    void settleEncoding();
    /// Whether parse() reads these bytes as UTF-8.
    static bool readsAsUtf8(const QByteArray &bytes);

    std::optional<QString> value(const QString &section, const QString &key) const;
    bool hasSection(const QString &section) const;
    QStringList sections() const;
    QStringList keys(const QString &section) const;

    void setValue(const QString &section, const QString &key, const QString &value);
    void removeKey(const QString &section, const QString &key);
    void removeSection(const QString &section);

private:
    bool encode(const QString &text, QByteArray &out) const;
    QString decode(const char *text) const;
    void switchToUtf8();

    // SimpleIni holds the lines from the first to the last entry; the comment and blank
    // lines around them are kept here verbatim, because SimpleIni drops the comments at
    // the end of a file.
    std::unique_ptr<CSimpleIniA> m_ini;
    QByteArray m_head;
    QByteArray m_tail;
    bool m_utf8 = false;
    bool m_bom = false;
    bool m_crlf = false;
};

} // namespace drivewiz::detail

#endif // DRIVEWIZ_PLATFORM_INIFILE_P_H
