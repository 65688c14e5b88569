// File and form helpers of Divers: the only part of the unit that uses widgets.

#include "util/Divers.h"

#include "platform/convert.h"
#include "platform/dialogs.h"
#include "platform/rtfreader.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <limits>

namespace drivewiz {

QPointer<QTextEdit> tmpRichedit;

QString ConvertRTFToAsciiText(const QByteArray &rtf)
{
    if (!tmpRichedit) {
        ShowMessage(QStringLiteral("Im Hauptformular fehlt TRichEdit-Komponente für die "
                                   "Konvertierung!"));
        return QString();
    }
    RtfToDocument(rtf, tmpRichedit->document());
    return tmpRichedit->toPlainText();
}

int GetAnzahlASCIIZeilen(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return 0;
    qint64 lines = 0;
    char previous = '\n'; // nothing pending at the start
    QByteArray chunk;
    while (!(chunk = file.read(1 << 16)).isEmpty()) {
        for (char c : chunk) {
            // CR LF is one line end; a lone CR or LF is one as well.
            if (c == '\r' || (c == '\n' && previous != '\r')) ++lines;
            previous = c;
        }
    }
    if (previous != '\n' && previous != '\r') ++lines; // a last line without line end
    return int(std::min<qint64>(lines, std::numeric_limits<int>::max()));
}

bool WriteMemoToFile(QPlainTextEdit *memo, const QString &fileName)
{
    if (!memo) return false;
    QString text = memo->toPlainText();
    if (!text.isEmpty() && !text.endsWith(u'\n')) text += u'\n';
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    const QByteArray bytes = text.toUtf8();
    return file.write(bytes) == bytes.size();
}

namespace {

bool isLineBreak(QChar c)
{
    return c == u'\r' || c == u'\n' || c == QChar::ParagraphSeparator || c == QChar::LineSeparator;
}

void removeTrailingBreaks(QTextDocument *doc)
{
    QTextCursor cursor(doc);
    cursor.movePosition(QTextCursor::End);
    const int end = cursor.position();
    int start = end;
    while (start > 0 && isLineBreak(doc->characterAt(start - 1)))
        --start;
    if (start == end) return;
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void removeTrailingEmptyLines(QTextDocument *doc)
{
    while (doc->blockCount() > 1 && doc->lastBlock().text().isEmpty()) {
        const int before = doc->blockCount();
        QTextCursor cursor(doc->lastBlock());
        cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        if (doc->blockCount() >= before) return; // e.g. a table cell boundary: leave it
    }
}

template <typename Match> QWidget *findDepthFirst(QWidget *container, const Match &match)
{
    for (QObject *child : container->children()) {
        if (!child->isWidgetType()) continue;
        auto *w = static_cast<QWidget *>(child);
        if (match(w)) return w;
        if (QWidget *hit = findDepthFirst(w, match)) return hit;
    }
    return nullptr;
}

QString bareClassName(const QObject *o)
{
    const QString full = QString::fromLatin1(o->metaObject()->className());
    const qsizetype colons = full.lastIndexOf(QLatin1String("::"));
    return colons < 0 ? full : full.mid(colons + 2);
}

} // namespace

void Del_CRLF(QTextEdit *edit, int count)
{
    if (!edit) return;
    if (count == 0)
        removeTrailingBreaks(edit->document());
    else if (count > 0)
        removeTrailingEmptyLines(edit->document());
}

QWidget *FindMyControl(QWidget *container, const QString &name)
{
    if (!container || name.isEmpty()) return nullptr;
    return findDepthFirst(container, [&](QWidget *w) {
        return w->objectName().compare(name, Qt::CaseInsensitive) == 0;
    });
}

QWidget *FindMyClass(QWidget *container, const QString &className)
{
    if (!container || className.isEmpty()) return nullptr;
    return findDepthFirst(container, [&](QWidget *w) {
        return bareClassName(w).compare(className, Qt::CaseInsensitive) == 0;
    });
}

QWidget *GetMainForm(QObject *component)
{
    QWidget *form = nullptr;
    for (QObject *o = component; o; o = o->parent()) {
        if (o->isWidgetType() && static_cast<QWidget *>(o)->isWindow())
            form = static_cast<QWidget *>(o);
    }
    return form;
}

void AlleWindowsArchiv(QWidget *form, bool flag)
{
    QWidgetList forms;
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        forms = QApplication::topLevelWidgets();
    if (form && !forms.contains(form)) forms.append(form);
    for (QWidget *w : forms) {
        auto *box = qobject_cast<QCheckBox *>(FindMyControl(w, QStringLiteral("CheckBoxArchiv")));
        if (box) box->setChecked(flag);
    }
}

void AdjustImageSize(QLabel *image)
{
    if (!image) return;
    const QScreen *screen = image->screen() ? image->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const int ppi = qRound(screen->logicalDotsPerInch());
    if (ppi == 96 || ppi <= 0) return;
    image->setScaledContents(true);
    const double scale = 96.0 / ppi;
    image->resize(int(Round(image->width() * scale)), int(Round(image->height() * scale)));
}

} // namespace drivewiz
