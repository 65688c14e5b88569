// The digital output frame: the fitted option board's outputs and the source lists.

#include "ioframes/DigitalAusgang.h"

#include "ioframes/QuellListe_p.h"
#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "ui_DigitalAusgang.h"

#include <QLabel>

namespace drivewiz {

namespace {

const QString kPictures = QStringLiteral(":/drivewiz/pictures/");

} // namespace

TDigitalAus::TDigitalAus(QWidget *parent)
    : QFrame(parent), m_ui(std::make_unique<Ui::TDigitalAus>()),
      m_link(std::make_unique<ioframes::FrameTable>()),
      m_sources(std::make_unique<ioframes::SourceListCache>())
{
    m_ui->setupUi(this);
    P_F61 = m_ui->P_F61;
    P_F62 = m_ui->P_F62;
    P_F63 = m_ui->P_F63;
    P_F64 = m_ui->P_F64;
    P_F65 = m_ui->P_F65;
    P_F66 = m_ui->P_F66;
    P_F67 = m_ui->P_F67;
    P_F68 = m_ui->P_F68;
    P_F69 = m_ui->P_F69;
    P_F70 = m_ui->P_F70;
    LblBA1 = m_ui->LblBA1;
    LblBA2 = m_ui->LblBA2;
    LblBA3 = m_ui->LblBA3;
    LblBA10 = m_ui->LblBA10;
    LblX100 = m_ui->LblX100;
    LblX103_1 = m_ui->LblX103_1;
    LblX103_2 = m_ui->LblX103_2;
    LblOption = m_ui->LblOption;
    Bevel_ExtBAs = m_ui->Bevel_ExtBAs;
    Image1 = m_ui->Image1;
    Img_BA_KBQ7700 = m_ui->Img_BA_KBQ7700;
    Img_BA_KBQ7701_1 = m_ui->Img_BA_KBQ7701_1;
    Img_BA_KBW7700 = m_ui->Img_BA_KBW7700;
    Img_BA_KBQ7701_2 = m_ui->Img_BA_KBQ7701_2;
    LblInfoOben = m_ui->LblInfoOben;
    ioframes::SetPicture(Image1, kPictures + QStringLiteral("ba_x101.svg"));
    ioframes::SetPicture(Img_BA_KBQ7700, kPictures + QStringLiteral("ba_kbq7700.svg"));
    ioframes::SetPicture(Img_BA_KBQ7701_1, kPictures + QStringLiteral("ba_kbq7701_1.svg"));
    ioframes::SetPicture(Img_BA_KBW7700, kPictures + QStringLiteral("ba_kbw7700.svg"));
    ioframes::SetPicture(Img_BA_KBQ7701_2, kPictures + QStringLiteral("ba_kbq7701_2.svg"));
    m_helpers = std::make_unique<QObject>();
    hookControls();
}

TDigitalAus::~TDigitalAus()
{
    addComponentState(csDestroying);
    // The frame's controls outlive this destructor for a moment: they call it no more.
    m_helpers.reset();
    for (TParaClass *c : findChildren<TParaClass *>()) {
        c->OnChange = nullptr;
        c->OnExit = nullptr;
    }
}

QList<TParaClass *> TDigitalAus::SourceControls() const
{
    return {P_F61, P_F62, P_F63, P_F64, P_F65, P_F66, P_F67, P_F68, P_F69, P_F70};
}

// --- properties --------------------------------------------------------------------------------

void TDigitalAus::SetwizParaSource(TParaTable *table)
{
    m_link->set(table);
    for (TParaClass *c : SourceControls())
        c->SetwizParaSource(table);
    if (!ioframes::atRunTime(*this)) return;
    for (TParaClass *c : SourceControls())
        c->RebuildParaControl();
    InitParameterCombo(m_liste, wizParaSource(), this);
}

TParaTable *TDigitalAus::wizParaSource() const
{
    return m_link->get();
}

QString TDigitalAus::wizParaSourceName() const
{
    return m_link->name();
}

void TDigitalAus::SetwizParaSourceName(const QString &objectName)
{
    if (m_link->rename(objectName) && !isLoading())
        SetwizParaSource(ioframes::tableByName(this, objectName));
}

void TDigitalAus::SetParameterListe(const QString &liste)
{
    if (liste == m_liste) return;
    m_liste = liste;
    if (ioframes::atRunTime(*this)) InitParameterCombo(m_liste, wizParaSource(), this);
}

void TDigitalAus::Loaded()
{
    Component::Loaded();
    if (isDesigning()) return;
    m_link->resolve(this);
    SetwizParaSource(m_link->get());
    HideMissingOutputs();
    UpdateLanguage();
}

// --- source lists ------------------------------------------------------------------------------

void TDigitalAus::hookControls()
{
    for (TParaClass *c : SourceControls()) {
        c->OnExit = [this, previous = c->OnExit](QObject *sender) {
            if (previous) previous(sender);
            P_F61Exit(sender);
        };
        ioframes::WatchSourceField(c, m_helpers.get(),
                                   [this, c] { InitParameterCombo(m_liste, wizParaSource(), c); });
    }
    ioframes::KeepTabOrder(this, m_helpers.get(), [this] {
        QList<QWidget *> fields;
        for (TParaClass *c : SourceControls())
            fields << c->GetEditControl();
        return fields;
    });
}

void TDigitalAus::InitParameterCombo(const QString &liste, TParaTable *table, QWidget *parent)
{
    if (!table || !parent) return;
    ioframes::SourceFilter filter;
    filter.typeWords = {QStringLiteral("B"), QStringLiteral("U8"), QStringLiteral("I8")};
    filter.selections = true;
    filter.zeroOne = true;
    const QStringList entries =
        m_sources->entries(table, liste, filter, {QStringLiteral("E17"), QStringLiteral("E18")});
    QList<TParaClass *> controls = parent->findChildren<TParaClass *>();
    if (auto *self = qobject_cast<TParaClass *>(parent)) controls.prepend(self);
    for (TParaClass *c : std::as_const(controls)) {
        if (SourceControls().contains(c)) ioframes::FillSourceCombo(c, entries);
    }
}

void TDigitalAus::P_F61Exit(QObject *sender)
{
    CheckAchse(sender);
}

void CheckAchse(QObject *sender)
{
    ioframes::CheckSource(qobject_cast<TParaClass *>(sender));
}

// --- the fitted hardware ------------------------------------------------------------------------

void TDigitalAus::hideAll()
{
    for (TParaClass *c : SourceControls().mid(2))
        c->SetwizVisible(false);
    for (QWidget *w :
         {static_cast<QWidget *>(Img_BA_KBQ7700), static_cast<QWidget *>(Img_BA_KBQ7701_1),
          static_cast<QWidget *>(Img_BA_KBW7700), static_cast<QWidget *>(Img_BA_KBQ7701_2),
          static_cast<QWidget *>(LblBA3), static_cast<QWidget *>(LblBA10),
          static_cast<QWidget *>(Bevel_ExtBAs), static_cast<QWidget *>(LblX103_1),
          static_cast<QWidget *>(LblX103_2), static_cast<QWidget *>(LblOption)})
        w->hide();
}

void TDigitalAus::applyBoard()
{
    hideAll();
    if (!m_board.picture) return;
    for (TParaClass *c : SourceControls().mid(2))
        c->SetwizVisible(true);
    m_board.picture->show();
    if (m_board.second) m_board.second->show();
    for (QWidget *w : {static_cast<QWidget *>(LblBA3), static_cast<QWidget *>(LblBA10),
                       static_cast<QWidget *>(Bevel_ExtBAs), static_cast<QWidget *>(LblX103_1),
                       static_cast<QWidget *>(LblOption)})
        w->show();
    LblX103_1->setText(m_board.terminal1);
    LblX103_2->setText(m_board.terminal2);
    LblX103_2->setVisible(m_board.second != nullptr);
    LblOption->setText(m_board.option);
}

void TDigitalAus::HideMissingOutputs()
{
    if (m_outputsShown || !wizParaSource() || !ioframes::atRunTime(*this)) return;
    m_outputsShown = true;
    m_board = Board();
    QString family, board;
    ioframes::DriveValue(wizParaSource(), QStringLiteral("E50"), family);
    if (family.contains(QLatin1String("ZRD"))) {
        ioframes::DriveValue(wizParaSource(), QStringLiteral("E54"), board);
        if (board == QLatin1String("KBW 7700"))
            m_board = {Img_BA_KBW7700, nullptr, QStringLiteral("X103D"), QString(),
                       QStringLiteral("Option KBW 7700")};
    } else if (family.contains(QLatin1String("VKP"))) {
        ioframes::DriveValue(wizParaSource(), QStringLiteral("E58"), board);
        if (board == QLatin1String("KBQ 7700"))
            m_board = {Img_BA_KBQ7700, nullptr, QStringLiteral("X103"), QString(),
                       QStringLiteral("Option KBQ 7700")};
        else if (board == QLatin1String("KBQ 7701"))
            m_board = {Img_BA_KBQ7701_1, Img_BA_KBQ7701_2, QStringLiteral("X103A"),
                       QStringLiteral("X103B"), QStringLiteral("Option KBQ 7701")};
    }
    applyBoard();
}

// --- language ----------------------------------------------------------------------------------

void TDigitalAus::UpdateLanguage()
{
    if (!wizParaSource()) return;
    ReadControls(wizParaSource()->LanguageFile(), wizParaSource()->Language(),
                 QStringLiteral("TDigitalAus"), this);
    // Terminal and board names come from the hardware, not from the language file.
    if (m_outputsShown) applyBoard();
}

void TDigitalAus::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    // A language file read anew (the host may choose the language after loading).
    if (event->type() == QEvent::LanguageChange && ioframes::atRunTime(*this)) UpdateLanguage();
}

} // namespace drivewiz
