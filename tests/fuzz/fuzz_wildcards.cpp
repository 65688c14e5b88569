// Wildcards: what any mask language must keep. A name matches itself; "?" stands for any
// one character; a mask cut after a prefix of the name and ended by "*" matches; "*"
// and "*.*" match everything; a mask without wildcards matches only its own text (with
// any extension when it has none).

#include "fuzz_support.h"

#include "util/Divers.h"

using namespace drivewiz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    const int cut = in.ConsumeIntegralInRange(0, 64);
    const int at = in.ConsumeIntegralInRange(0, 64);
    const QString mask = fuzz::text(in, 40);
    QString name = fuzz::text(in, 40);

    WildComp(mask, name); // any mask against any name: no crash, no hang
    FUZZ_CHECK(WildComp(QStringLiteral("*"), name), name);
    FUZZ_CHECK(WildComp(QStringLiteral("*.*"), name), name);
    name.remove(u'*').remove(u'?');
    FUZZ_CHECK(WildComp(name, name), name);

    const qsizetype dot = name.indexOf(u'.');
    const QString base = dot < 0 ? name : name.left(dot);
    const QString ext = dot < 0 ? QString() : name.mid(dot + 1);
    if (!base.isEmpty()) {
        QString q = name;
        q[qMin<qsizetype>(at, base.size() - 1)] = u'?';
        FUZZ_CHECK(WildComp(q, name), q + " / " + name);
        FUZZ_CHECK(WildComp(base.left(qMin<qsizetype>(cut, base.size())) + "*", name),
                   base + " / " + name);
    }
    QString plain = mask;
    plain.remove(u'*').remove(u'?');
    const qsizetype pdot = plain.indexOf(u'.');
    const bool same =
        pdot < 0 ? plain == base : plain.left(pdot) == base && plain.mid(pdot + 1) == ext;
    FUZZ_CHECK(WildComp(plain, name) == same, plain + " / " + name);
    return 0;
}
