#include "platform/inifile.h"
#include "platform/convert.h"
#include "platform/inifile_p.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

#include <vector>

namespace drivewiz {

namespace {

// A change made through an IniFile, replayed on the file's current text when saving.
struct Change
{
    enum Kind { Write, DeleteKey, EraseSection } kind;
    QString section;
    QString key;
    QString value;
};

void apply(detail::IniDocument &doc, const Change &c)
{
    switch (c.kind) {
    case Change::Write:
        doc.setValue(c.section, c.key, c.value);
        break;
    case Change::DeleteKey:
        doc.removeKey(c.section, c.key);
        break;
    case Change::EraseSection:
        doc.removeSection(c.section);
        break;
    }
}

// Reads the file; a missing file is empty.
bool readBytes(const QString &path, QByteArray &bytes, QString &error)
{
    bytes.clear();
    const QFileInfo info(path);
    if (!info.exists()) return true;
    if (info.isDir()) {
        error = QStringLiteral("%1 is a folder, not an INI file").arg(path);
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("Cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    bytes = file.readAll();
    return true;
}

bool writeBytes(const QString &path, const QByteArray &bytes, QString &error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    error = QStringLiteral("Cannot write %1: %2").arg(path, file.errorString());
    return false;
}

QString lockError(const QLockFile &lock, const QString &path, int timeout)
{
    switch (lock.error()) {
    case QLockFile::LockFailedError:
        return QStringLiteral("%1 is locked by another program (waited %2 ms)")
            .arg(path)
            .arg(timeout);
    case QLockFile::PermissionError:
        return QStringLiteral("Cannot create the lock file %1.lock").arg(path);
    default:
        return QStringLiteral("Cannot lock %1").arg(path);
    }
}

} // namespace

struct IniFile::Private
{
    QString path;
    QString error;
    detail::IniDocument doc;
    std::vector<Change> changes;
    int lockTimeout = 5000;

    void change(Change c)
    {
        apply(doc, c);
        changes.push_back(std::move(c));
    }
};

IniFile::IniFile(const QString &path) : d(std::make_unique<Private>())
{
    d->path = path;
}

IniFile::~IniFile() = default;

QString IniFile::path() const
{
    return d->path;
}

QString IniFile::errorString() const
{
    return d->error;
}

bool IniFile::load()
{
    d->changes.clear();
    d->error.clear();
    QByteArray bytes;
    const bool ok = readBytes(d->path, bytes, d->error);
    d->doc = detail::IniDocument::parse(bytes);
    return ok;
}

bool IniFile::isReadOnly() const
{
    const QFileInfo info(d->path);
    if (!info.isFile()) return false;
    constexpr auto anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return !info.isWritable() || !(info.permissions() & anyWrite);
}

QString IniFile::readString(const QString &section, const QString &key,
                            const QString &defaultValue) const
{
    return d->doc.value(section, key).value_or(defaultValue);
}

int IniFile::readInteger(const QString &section, const QString &key, int defaultValue) const
{
    const auto text = d->doc.value(section, key);
    return text ? StrToIntDef(*text, defaultValue) : defaultValue;
}

bool IniFile::readBool(const QString &section, const QString &key, bool defaultValue) const
{
    return readInteger(section, key, defaultValue ? 1 : 0) != 0;
}

void IniFile::writeString(const QString &section, const QString &key, const QString &value)
{
    d->change({Change::Write, section, key, value});
}

void IniFile::writeInteger(const QString &section, const QString &key, int value)
{
    writeString(section, key, QString::number(value));
}

void IniFile::writeBool(const QString &section, const QString &key, bool value)
{
    writeString(section, key, value ? QStringLiteral("1") : QStringLiteral("0"));
}

bool IniFile::sectionExists(const QString &section) const
{
    return d->doc.hasSection(section);
}

bool IniFile::valueExists(const QString &section, const QString &key) const
{
    return d->doc.value(section, key).has_value();
}

QStringList IniFile::sections() const
{
    return d->doc.sections();
}

QStringList IniFile::keys(const QString &section) const
{
    return d->doc.keys(section);
}

void IniFile::deleteKey(const QString &section, const QString &key)
{
    d->change({Change::DeleteKey, section, key, QString()});
}

void IniFile::eraseSection(const QString &section)
{
    d->change({Change::EraseSection, section, QString(), QString()});
}

bool IniFile::isModified() const
{
    return !d->changes.empty();
}

bool IniFile::save()
{
    if (d->changes.empty()) return true;
    if (isReadOnly()) {
        d->error = QStringLiteral("%1 is write-protected").arg(d->path);
        return false;
    }
    QLockFile lock(d->path + QStringLiteral(".lock"));
    if (!lock.tryLock(d->lockTimeout)) {
        d->error = lockError(lock, d->path, d->lockTimeout);
        return false;
    }
    // Others may have saved since we loaded: apply our changes to what is there now.
    QByteArray bytes;
    if (!readBytes(d->path, bytes, d->error)) return false;
    detail::IniDocument current = detail::IniDocument::parse(bytes);
    for (const Change &c : d->changes)
        apply(current, c);
    current.settleEncoding();
    if (!writeBytes(d->path, current.render(), d->error)) return false;
    d->doc = std::move(current);
    d->changes.clear();
    d->error.clear();
    return true;
}

int IniFile::lockTimeout() const
{
    return d->lockTimeout;
}

void IniFile::setLockTimeout(int milliseconds)
{
    d->lockTimeout = qMax(0, milliseconds);
}

} // namespace drivewiz
