#ifndef DRIVEWIZ_TABLES_IMPORTOM_CSV_P_H
#define DRIVEWIZ_TABLES_IMPORTOM_CSV_P_H

#include "tables/ImportOM_CSV.h"

namespace drivewiz::tables {

/// A measurement as read from a file, before it replaces the component's.
struct ParsedMeasurement
{
    std::vector<double> x;
    std::vector<TImportOM_CSV::Channel> channels;
    QString xTitle;
    QString xUnit;
    double samplingTime = 0;
};

/// Where and why a measurement file failed; line and column 1-based, 0 for the file.
struct MeasurementError
{
    int line = 0;
    int column = 0;
    QString text;
};

bool parseMeasurement(const QByteArray &bytes, ParsedMeasurement &out, MeasurementError &error);

} // namespace drivewiz::tables

#endif // DRIVEWIZ_TABLES_IMPORTOM_CSV_P_H
