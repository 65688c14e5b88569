#ifndef DRIVEWIZ_TESTS_PARAMSETS_FIXTURE_H
#define DRIVEWIZ_TESTS_PARAMSETS_FIXTURE_H

#include "support/testing.h"

#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <gtest/gtest.h>

#include <QHash>
#include <QSet>
#include <QTemporaryDir>
#include <QWidget>

#include <vector>

namespace drivewiz::test {

/// A host behind the C callbacks: values per address, a write log, reads that fail for
/// chosen addresses and a status for writes to chosen addresses.
struct SetsHost
{
    QHash<quint32, QByteArray> values;
    std::vector<std::pair<quint32, QByteArray>> writes;
    QSet<quint32> failingReads;
    QHash<quint32, char> writeAnswers;
};

/// A form with a parameter table over a description file that has every kind of
/// parameter (a selection, a text with ";" and quotes, a binary pattern, a float with
/// decimals on two axes, array elements, the drive family, a read-only and an expert
/// parameter), controls for some of them, in a folder of its own that is also the
/// folder of wiz.cfg and the language files.
class ParamSetsTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// Connects the fake host (reads and writes go through it from then on).
    void connectHost();
    QString path(const QString &name) const { return m_dir.filePath(name); }
    /// The "Wert" of a parameter in the table.
    QString wert(const QString &koordinate, const QString &achse = QStringLiteral("1")) const;
    /// Types a text into a control's field and leaves it, as a user does.
    void typeInto(TParaClass *control, const QString &text);
    /// English texts from the sample language file.
    void useEnglish();

    static constexpr quint32 kA00 = 0x01000000;
    static constexpr quint32 kA01 = 0x01004000;
    static constexpr quint32 kB20 = 0x02050000;
    static constexpr quint32 kB20Axis2 = 0x42050000;
    static constexpr quint32 kA40_1 = 0x010A0001;

    QTemporaryDir m_dir;
    QWidget form;
    TParaTable *table = nullptr;
    TParaClass *b20 = nullptr;
    TParaClass *a01 = nullptr;
    TParaClass *other = nullptr; // a field to move the focus to
    SetsHost host;

private:
    QString m_oldCwd;
};

} // namespace drivewiz::test

#endif // DRIVEWIZ_TESTS_PARAMSETS_FIXTURE_H
