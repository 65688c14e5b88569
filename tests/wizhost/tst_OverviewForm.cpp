// The parameter overview: pages by group, parameters by read level, axis 1 and the
// drive-wide ones, element 0 only; controls stacked by their real heights.

#include "support/testing.h"

#include "OverviewForm.h"
#include "drivewiz/host_api.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/para_import.h"

#include <gtest/gtest.h>

#include <QScrollArea>
#include <QSet>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

class Overview : public testing::Test
{
protected:
    void TearDown() override { dwz_form_destroy(form); }

    // What the overview should list, read straight from the description file.
    QSet<QString> expected(int level)
    {
        TImportTable t;
        EXPECT_TRUE(t.ImportTable(params));
        QSet<QString> out;
        for (int p = 0; p < t.RowCount(); ++p) {
            const QString koord = t.Cell(p, QStringLiteral("Koordinate")).trimmed();
            const QString axis = t.Cell(p, QStringLiteral("Achse")).trimmed();
            const int readLevel = t.Cell(p, QStringLiteral("Read-Level")).trimmed().toInt();
            const bool element = koord.contains(QLatin1Char('.'));
            if ((axis == QLatin1String("0") || axis == QLatin1String("1")) && readLevel <= level &&
                (!element || koord.endsWith(QLatin1String(".0"))))
                out << koord;
        }
        return out;
    }
    QWidget *load(int level)
    {
        QString error;
        pages = WriteOverviewForm(params, level, ui, error);
        EXPECT_GT(pages, 0) << error.toStdString();
        form = dwz_form_create(ui.toUtf8().constData(), nullptr, 2, level, 1, DWZ_OFFLINE,
                               params.toUtf8().constData());
        EXPECT_NE(form, nullptr) << dwz_last_error();
        return form ? static_cast<QWidget *>(dwz_form_widget(form)) : nullptr;
    }
    static QSet<QString> shown(QWidget *w)
    {
        QSet<QString> out;
        for (TParaClass *c : w->findChildren<TParaClass *>())
            out << c->GetKoordinate();
        return out;
    }

    QTemporaryDir dir;
    const QString params = test::sourcePath(QStringLiteral("data/sample/Parameter.csv"));
    const QString ui = dir.filePath(QStringLiteral("Overview.ui"));
    dwz_form *form = nullptr;
    int pages = 0;
};

TEST_F(Overview, ListsWhatTheUserLevelMayRead)
{
    for (int level : {1, 4}) {
        QWidget *w = load(level);
        ASSERT_NE(w, nullptr);
        EXPECT_EQ(shown(w), expected(level)) << "level " << level;
        dwz_form_destroy(form);
        form = nullptr;
    }
    EXPECT_GT(expected(4).size(), expected(1).size());
}

TEST_F(Overview, OnePagePerGroupTitledByTheGroup)
{
    QWidget *w = load(4);
    ASSERT_NE(w, nullptr);
    auto *tabs = w->findChild<QTabWidget *>(QStringLiteral("PageControl"));
    ASSERT_NE(tabs, nullptr);
    ASSERT_EQ(tabs->count(), pages);
    EXPECT_EQ(tabs->tabText(1), QStringLiteral("B: Motor"));
    for (int i = 0; i < tabs->count(); ++i) {
        const QString letter = tabs->tabText(i).left(1);
        for (TParaClass *c : tabs->widget(i)->findChildren<TParaClass *>())
            EXPECT_TRUE(c->GetKoordinate().startsWith(letter)) << c->GetKoordinate().toStdString();
    }
}

TEST_F(Overview, ArrangedControlsDoNotOverlap)
{
    QWidget *w = load(4);
    ASSERT_NE(w, nullptr);
    ArrangeOverviewForm(w);
    for (QScrollArea *area : w->findChildren<QScrollArea *>()) {
        int bottom = 0;
        for (QObject *o : area->widget()->children()) {
            auto *c = qobject_cast<TParaClass *>(o);
            if (!c || c->isHidden()) continue;
            EXPECT_GE(c->y(), bottom) << c->GetKoordinate().toStdString();
            bottom = c->y() + c->height();
        }
        EXPECT_GE(area->widget()->height(), bottom);
    }
}

TEST_F(Overview, UnwritableFileIsReported)
{
    QString error;
    EXPECT_EQ(WriteOverviewForm(params, 2, dir.filePath(QStringLiteral("no/such/dir/x.ui")), error),
              -1);
    EXPECT_TRUE(error.contains(QStringLiteral("x.ui")));
}

} // namespace
