// A second program that writes wiz.cfg, for the test of two programs saving at once:
// inifile_writer <file> <section> <rounds> writes key k<i> = i into its section and
// "v" = i into section Common, saving after every pair. Exit code 0 when every save
// worked.

#include "platform/inifile.h"

#include <QCoreApplication>
#include <QStringList>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 4) return 2;
    drivewiz::IniFile ini(args.at(1));
    if (!ini.load()) return 3;
    const int rounds = args.at(3).toInt();
    for (int i = 0; i < rounds; ++i) {
        ini.writeInteger(args.at(2), QStringLiteral("k%1").arg(i), i);
        ini.writeInteger(QStringLiteral("Common"), QStringLiteral("v"), i);
        if (!ini.save()) return 4;
    }
    return 0;
}
