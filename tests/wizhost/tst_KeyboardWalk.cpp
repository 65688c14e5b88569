// The demo's wizards with the keyboard only: Tab walks each page's fields from top to
// bottom and then the wizard's buttons; Ctrl+F reaches the search field.

#include "session_fixture.h"

#include "paramctrls/ParamCtrls.h"
#include "wizard/wizPageControl.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

class KeyboardWalk : public HostSessionTest
{
protected:
    QDialog *open(Wizard which)
    {
        dwz_form *form = session->createWizard(which);
        if (!form) return nullptr;
        dwz_form_show(form);
        QApplication::setActiveWindow(session->openDialog());
        settle();
        return session->openDialog();
    }
    // What a person sees the focus on: a parameter control's coordinate, else the
    // widget's name.
    static QString focusName()
    {
        QWidget *w = QApplication::focusWidget();
        for (QWidget *p = w; p; p = p->parentWidget())
            if (auto *c = qobject_cast<TParaClass *>(p)) return c->GetKoordinate();
        return w ? w->objectName() : QStringLiteral("(none)");
    }
    // The focus names Tab visits, starting where the focus is, until it comes back.
    static QStringList tabWalk(int limit = 60)
    {
        QStringList names{focusName()};
        for (int i = 0; i < limit; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const QString name = focusName();
            if (name == names.first()) break;
            if (names.isEmpty() || names.last() != name) names << name;
        }
        return names;
    }
};

TEST_F(KeyboardWalk, TabGoesThroughThePageTopToBottomThenTheButtons)
{
    QDialog *dialog = open(Wizard::Setup);
    ASSERT_NE(dialog, nullptr);
    auto *pages = dialog->findChild<TwizPageControl *>();
    ASSERT_NE(pages, nullptr);
    const QStringList walk = tabWalk();

    // Every visible parameter control of the page, in the order a reader meets them.
    QList<TParaClass *> controls;
    for (TParaClass *c : pages->currentWidget()->findChildren<TParaClass *>())
        if (c->isVisible() && c->GetEditControl() && c->GetEditControl()->isEnabled() &&
            c->GetEditControl()->focusPolicy() & Qt::TabFocus)
            controls << c;
    std::sort(controls.begin(), controls.end(), [](TParaClass *a, TParaClass *b) {
        const QPoint pa = a->mapTo(a->window(), QPoint()), pb = b->mapTo(b->window(), QPoint());
        return pa.y() != pb.y() ? pa.y() < pb.y() : pa.x() < pb.x();
    });
    QStringList expected;
    for (TParaClass *c : controls)
        expected << c->GetKoordinate();
    ASSERT_FALSE(expected.isEmpty());
    EXPECT_EQ(walk.mid(0, expected.size()), expected);

    const auto at = [&walk](const char *name) { return walk.indexOf(QLatin1String(name)); };
    EXPECT_GT(at("BtnNext_0"), expected.size() - 1);
    EXPECT_GT(at("BtnOK"), at("BtnNext_0"));
    EXPECT_GT(at("BtnCancel"), at("BtnNext_0"));
}

TEST_F(KeyboardWalk, CtrlFReachesTheSearchField)
{
    QDialog *dialog = open(Wizard::Setup);
    ASSERT_NE(dialog, nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focusName(), QStringLiteral("EdSearch"));
}

} // namespace
