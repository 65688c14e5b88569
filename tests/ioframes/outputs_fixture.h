#ifndef DRIVEWIZ_TESTS_OUTPUTS_FIXTURE_H
#define DRIVEWIZ_TESTS_OUTPUTS_FIXTURE_H

// A shown form with a parameter table on a small drive made for the output frames: output
// sources of every kind, binary signals, the output and encoder parameters and the
// hardware parameters E50, E54 and E58. The simulated drive serves the same file.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class OutputsForm : public testing::Test
{
public:
    /// One description row; the address is computed from coordinate and axis.
    struct Row
    {
        const char *name;
        const char *koord;
        int axis;
        const char *wert;
        int art;
        const char *type;
        const char *unit = "";
        int readLevel = 1;
        const char *ogw = "";
        const char *ugw = "";
        int decimals = 0;
        int function = 0;
        const char *bus = "";
    };

protected:
    static QByteArray descriptions(const std::vector<Row> &extra = {},
                                   const QStringList &without = {});
    static QByteArray selections();

    void SetUp() override;
    void TearDown() override;

    /// Replaces the table's descriptions (the simulated drive follows), e.g. to add rows.
    void reload(const std::vector<Row> &extra, const QStringList &without = {});
    /// Sets a value in the table and in the drive.
    void setValue(const QString &koordinate, const QString &value, int axis = 0);
    /// The table's value of a parameter.
    QString value(const QString &koordinate, int axis = 0) const;
    /// Calls Loaded() on a frame made in code, as the form loader does.
    static void load(QWidget *frame);
    /// Connects the simulated drive (values from it, descriptions from the file).
    void connectDrive();
    /// Connects the simulated drive and switches the table to a mode.
    void goOnline(drivewiz::tOnlineModus mode = drivewiz::omOnline);
    /// Moves the focus into a widget, or out to a neutral field.
    void enter(QWidget *w);
    void leave();
    /// The items of a parameter control's drop-down list.
    static QStringList items(drivewiz::TParaClass *c);
    /// Makes "../WizLingua/wizling.<n>" with `text` the language files of the test (the
    /// working folder moves for it; TearDown moves it back). Language 1 is German.
    void languageFile(int n, const QByteArray &text);
    /// Lets the announcement of a new language reach every widget (it comes through the
    /// event loop, to the application and then to each window).
    static void languageChanged();
    QStringList messages() { return drivewiz::test::recorder().takeMessages(); }
    int beeps() const { return drivewiz::test::recorder().beeps(); }

    QTemporaryDir dir;
    QString params;
    drivewiz::sim::SimulatedDrive drive;
    std::unique_ptr<QWidget> form;
    QLineEdit *neutral = nullptr;
    drivewiz::TParaTable *table = nullptr;
    QString oldCwd;
};

#endif // DRIVEWIZ_TESTS_OUTPUTS_FIXTURE_H
