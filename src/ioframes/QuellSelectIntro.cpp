// The introduction above a page of signal sources.

#include "ioframes/QuellSelectIntro.h"

#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "ui_QuellSelectIntro.h"

#include <QLabel>

namespace drivewiz {

namespace {
constexpr int kMargin = 4;
}

TQuellSelektorIntro::TQuellSelektorIntro(QWidget *parent)
    : QFrame(parent), m_ui(std::make_unique<Ui::TQuellSelektorIntro>())
{
    ioframes::setupForm(this, [this] { m_ui->setupUi(this); });
    Label1 = m_ui->Label1;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TQuellSelektorIntro::~TQuellSelektorIntro() = default;

void TQuellSelektorIntro::UpdateLanguage(TParaTable *table)
{
    if (!table || isDesigning()) return;
    Label1->setText(wizReadString(table->LanguageFile(), QStringLiteral("TQuellSelektorIntro"),
                                  QStringLiteral("cLabel1"), Label1->text()));
    updateGeometry();
    resizeEvent(nullptr);
}

void TQuellSelektorIntro::UpdateLanguage()
{
    QWidget *form = window();
    UpdateLanguage(form ? form->findChild<TParaTable *>() : nullptr);
}

int TQuellSelektorIntro::heightForWidth(int width) const
{
    return Label1->heightForWidth(std::max(1, width - 2 * kMargin)) + 2 * kMargin;
}

QSize TQuellSelektorIntro::sizeHint() const
{
    const int w = std::max(width(), 300);
    return QSize(w, heightForWidth(w));
}

QSize TQuellSelektorIntro::minimumSizeHint() const
{
    return QSize(100, heightForWidth(std::max(width(), 100)));
}

// The text wraps at the frame's width; a frame placed by coordinates grows to show it all.
void TQuellSelektorIntro::resizeEvent(QResizeEvent *event)
{
    if (event) QFrame::resizeEvent(event);
    const int h = heightForWidth(width());
    Label1->setGeometry(kMargin, kMargin, std::max(1, width() - 2 * kMargin), h - 2 * kMargin);
    if (!parentWidget() || parentWidget()->layout()) return;
    if (height() < h) resize(width(), h);
}

void TQuellSelektorIntro::Loaded()
{
    Component::Loaded();
    if (!isDesigning()) UpdateLanguage();
}

} // namespace drivewiz
