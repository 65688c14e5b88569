#include "gendesc.h"

#include <cstdio>
#include <fstream>

namespace drivewiz::gendesc {

namespace {

// A small, fixed mixing function: the same inputs give the same file on every machine.
uint32_t mix(uint32_t a, uint32_t b, uint32_t c)
{
    uint32_t h =
        a * 0x9E3779B1u ^ (b + 0x7F4A7C15u) * 0x85EBCA77u ^ (c + 0x165667B1u) * 0xC2B2AE3Du;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    h *= 0x297A2D39u;
    h ^= h >> 15;
    return h;
}

// Names carry umlauts (single bytes in Windows-1252) as real description files do.
const char *const kNames[] = {
    "Drehzahl-Sollwert",
    "Drehmoment-Grenze",
    "\xDC"
    "berwachungszeit",
    "Strom-Istwert",
    "Lageregler Verst\xE4rkung",
    "Beschleunigungsrampe",
    "Bremsrampe",
    "Motortemperatur",
    "Geber-Aufl\xF6sung",
    "Schleppfehler-Grenze",
    "Analogeingang Offset",
    "Digitalausgang Funktion",
    "Feldbus-Adresse",
    "Ger\xE4tezustand",
    "Zwischenkreisspannung",
    "Quelle; Signal",
    "Ma\xDF"
    "einheit Weg",
    "Tippbetrieb Drehzahl",
};
const char *const kTypes[] = {"B",   "I8",  "U8", "I16", "U16",  "I32",   "U32",
                              "P64", "R64", "VS", "OS",  "STR8", "STR16", "U8A64"};
const char *const kUnits[] = {"rpm",
                              "Nm",
                              "A",
                              "V",
                              "ms",
                              "%",
                              "\xB0"
                              "C",
                              "Ink",
                              "<B26>",
                              ""};

struct Param
{
    int group;    // 1..26
    int number;   // 0..1023, beyond that when the sequence is exhausted
    int elements; // 0 = scalar, else array or record elements (1..n, plus .0)
    bool record;
    int axes;
};

Param paramAt(long index, uint32_t seed, int maxAxes)
{
    Param p;
    p.group = int(index / 1024) % 26 + 1;
    p.number = int(index % 1024) + 1024 * int(index / (26 * 1024));
    const uint32_t h = mix(uint32_t(p.group), uint32_t(p.number), seed);
    const uint32_t kind = h % 100;
    p.record = kind >= 95;
    p.elements = kind >= 95 ? 3 + int(h >> 8) % 4 : kind >= 85 ? 8 + int(h >> 8) % 9 : 0;
    p.axes = 1 + int((h >> 16) % uint32_t(maxAxes));
    return p;
}

void appendRow(std::string &out, const Param &p, int element, int axis, uint32_t seed)
{
    const uint32_t h = mix(uint32_t(p.group * 1024 + p.number), uint32_t(element), seed);
    const char letter = char('A' + p.group - 1);
    char koord[32];
    if (p.elements > 0)
        std::snprintf(koord, sizeof koord, "%c%02d.%d", letter, p.number, element);
    else
        std::snprintf(koord, sizeof koord, "%c%02d", letter, p.number);
    const uint32_t address = (uint32_t(axis - 1) << 30) + (uint32_t(p.group) << 24) +
                             (uint32_t(p.number) << 14) + uint32_t(element);
    std::string name = kNames[h % (sizeof kNames / sizeof *kNames)];
    if (p.record && element > 0) name += " \xA7" + std::to_string(element);
    const char *type = kTypes[(h >> 4) % (sizeof kTypes / sizeof *kTypes)];
    const char *unit = kUnits[(h >> 9) % (sizeof kUnits / sizeof *kUnits)];
    const int art = (h >> 13) % 10 == 0 ? 1 : (h >> 13) % 10 == 1 ? 4 : (h >> 13) % 10 == 2 ? 6 : 0;
    const int decimals = int((h >> 17) % 3);
    const long upper = long((h >> 19) % 30000);
    char line[512];
    std::snprintf(line, sizeof line,
                  "\"%s\";%s;%d;%ld;%d;%08X;%s;%s;%d;%d;0;%ld;-%ld;%d;%d;\"%ld = 3000 rpm\"\r\n",
                  name.c_str(), koord, axis, long(h % 1000), art, address, type, unit,
                  1 + int((h >> 23) % 5), 1 + int((h >> 26) % 4), upper, upper, decimals,
                  (h >> 28) % 8 == 3 ? 3 : 0, long(1) << (10 + (h >> 29)));
    out += line;
}

} // namespace

std::string generate(const Options &options)
{
    std::string out = "Name;Koordinate;Achse;Wert;Art;USS-Adresse /hex;Datentyp;Einheit;"
                      "Write-Level;Read-Level;Defaultwert;OGW;UGW;Nachkommastellen;"
                      "Skalierungsfunktion;Skalierung BUS\r\n";
    out.reserve(size_t(options.rows) * 110 + out.size());
    const int maxAxes = options.maxAxes < 1 ? 1 : options.maxAxes > 4 ? 4 : options.maxAxes;
    long seen = 0;
    long written = 0;
    for (long index = 0; written < options.rows; ++index) {
        const Param p = paramAt(index, options.seed, maxAxes);
        for (int element = 0; element <= p.elements && written < options.rows; ++element) {
            for (int axis = 1; axis <= p.axes && written < options.rows; ++axis) {
                if (seen++ < options.skip) continue;
                appendRow(out, p, element, axis, options.seed);
                ++written;
            }
        }
    }
    return out;
}

bool writeFile(const std::string &path, const Options &options)
{
    std::ofstream f(path, std::ios::binary | std::ios::trunc);
    const std::string bytes = generate(options);
    f.write(bytes.data(), std::streamsize(bytes.size()));
    return bool(f);
}

} // namespace drivewiz::gendesc
