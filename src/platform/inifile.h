#ifndef DRIVEWIZ_PLATFORM_INIFILE_H
#define DRIVEWIZ_PLATFORM_INIFILE_H

#include "drivewiz_global.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace drivewiz {

/// An INI file (language files, wiz.cfg, history lists) held in memory.
///
/// - Section and key names are case-insensitive (ASCII letters); surrounding blanks of
///   names and values are not part of them, as in every INI file.
/// - Values are verbatim: a comma is no list separator, a backslash no escape, a ";" or
///   "#" inside a value no comment. Line breaks in written values become blanks.
/// - A file is decoded as UTF-8 when it is valid UTF-8, else as Windows-1252, and is
///   written back in the same encoding, with its byte order mark and line ends. A file
///   that starts out empty or plain ASCII is written as Windows-1252 until a text needs
///   more; then the whole file changes to UTF-8 (rather than losing characters).
/// - Comments and the order of sections and keys are kept; a malformed line (no "=", an
///   unclosed "[") is kept as a comment. Of a key given twice the last value counts.
///   Keys before the first section header belong to no section and are kept as they are.
///
/// Several programs may share one file (wiz.cfg), so save() writes only the changes made
/// through this object: under a lock file it reads the file again, applies the changes
/// in order and replaces the file atomically. Not thread-safe; use one object per thread.
class DRIVEWIZ_EXPORT IniFile
{
public:
    /// Names the file; nothing is read until load().
    explicit IniFile(const QString &path);
    ~IniFile();
    IniFile(const IniFile &) = delete;
    IniFile &operator=(const IniFile &) = delete;

    QString path() const;

    /// Reads the file and forgets unsaved changes. A missing file reads as empty and is
    /// no error. Returns false for a folder or an unreadable file (see errorString());
    /// the contents are then empty.
    bool load();

    /// Why the last load() or save() failed.
    QString errorString() const;

    /// True when the file exists and is write-protected: it has no write permission at
    /// all (the read-only attribute; so even for root) or the user may not write it.
    bool isReadOnly() const;

    /// The value, or the default when section or key is missing. An empty value counts.
    QString readString(const QString &section, const QString &key,
                       const QString &defaultValue = QString()) const;
    /// The value as an integer (decimal, "$" or "0x" hex); the default when missing or
    /// not an integer.
    int readInteger(const QString &section, const QString &key, int defaultValue) const;
    /// readInteger() != 0; "true" is not an integer and gives the default.
    bool readBool(const QString &section, const QString &key, bool defaultValue) const;

    /// Sets a value, adding section and key at the end when new. Empty names are ignored.
    void writeString(const QString &section, const QString &key, const QString &value);
    void writeInteger(const QString &section, const QString &key, int value);
    /// Writes "1" or "0".
    void writeBool(const QString &section, const QString &key, bool value);

    bool sectionExists(const QString &section) const;
    bool valueExists(const QString &section, const QString &key) const;
    /// Section names in file order.
    QStringList sections() const;
    /// Key names of a section in file order.
    QStringList keys(const QString &section) const;

    /// Removes a key; the section stays, even when empty.
    void deleteKey(const QString &section, const QString &key);
    /// Removes a section with all its keys.
    void eraseSection(const QString &section);

    /// True when there are changes that save() has not written yet.
    bool isModified() const;

    /// Writes the changes made since load() or the last save(); true when there were
    /// none. Waits up to lockTimeout() for "<path>.lock"; a lock whose program no longer
    /// runs, or that is older than 30 s, is taken over. On timeout, a write-protected
    /// file or a write error it returns false (see errorString()), leaves the file as it
    /// was and keeps the changes for a later save(). After a successful save the object
    /// also holds what others saved in the meantime.
    bool save();

    /// Milliseconds save() waits for the lock; 5000 by default.
    int lockTimeout() const;
    void setLockTimeout(int milliseconds);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_INIFILE_H
