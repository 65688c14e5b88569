#ifndef DRIVEWIZ_TESTS_IOFRAMES_FIXTURE_H
#define DRIVEWIZ_TESTS_IOFRAMES_FIXTURE_H

// A shown form in its own working folder (with a central language folder, so language
// files can be written per test) and a parameter table on a small simulated drive with
// the parameters the input frames bind: sources A60-A62 (29 entries: fixed levels, bus
// bit, BE1..BE13 plain and inverted), A68 (the same list without entry 0), A69 (entry 5
// is "BE1": text and index disagree), displays A310-A312, control word A180 (U16),
// A181 (8 bits), A182 (I32, value -1), hardware E50/E54/E58, analog levels E10/E11/E74,
// offsets and factors F11-F32, I70, I130 (analog source), I210, I330, I331.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>

namespace drivewiz {
class TBEinput;
class TBitLeiste;
} // namespace drivewiz

class InputForm : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// A parameter control on the form, built.
    drivewiz::TParaClass *control(const QString &koordinate, QWidget *parent = nullptr);
    /// A binary input on the form (source, display, bus bit of A180).
    drivewiz::TBEinput *binaryInput(const QString &koordinate, const QString &display, int bit,
                                    QWidget *parent = nullptr);
    /// A bit bar over a new read-only control of `master`, with captions for the bits
    /// from `first`.
    drivewiz::TBitLeiste *bitBar(const QString &master, int first, const QStringList &captions,
                                 QWidget *parent = nullptr);
    /// Sets a row's "Wert" in the table (the hardware parameters are read from there).
    void setValue(const QString &koordinate, const QString &value);
    /// Writes the language file of a language into the central folder and selects it.
    void useLanguage(int language, const QByteArray &ini);
    /// Connects the drive (values only: descriptions stay the file's) and goes online.
    void goOnline();
    void settle();
    QStringList messages() { return drivewiz::test::recorder().takeMessages(); }
    int beeps() const { return drivewiz::test::recorder().beeps(); }

    QTemporaryDir dir;
    QString oldCwd;
    drivewiz::sim::SimulatedDrive drive;
    std::unique_ptr<QWidget> form;
    drivewiz::TParaTable *table = nullptr;
};

#endif // DRIVEWIZ_TESTS_IOFRAMES_FIXTURE_H
