#ifndef DRIVEWIZ_TABLES_MEASUREMENTPLOT_P_H
#define DRIVEWIZ_TABLES_MEASUREMENTPLOT_P_H

#include "drivewiz_global.h"

#include <vector>

namespace drivewiz::tables {

/// Smallest and largest value of any span of samples, from the samples and the minimum
/// and maximum of each block of 64: a span costs at most two partial blocks and one
/// step per whole block.
class DRIVEWIZ_EXPORT MinMaxIndex
{
public:
    static constexpr int kBlock = 64;

    explicit MinMaxIndex(const std::vector<double> &values);
    /// The minimum and maximum of values[from, to); false for an empty span.
    bool range(int from, int to, double &low, double &high) const;

private:
    const std::vector<double> &m_values;
    std::vector<double> m_low;
    std::vector<double> m_high;
};

} // namespace drivewiz::tables

#endif // DRIVEWIZ_TABLES_MEASUREMENTPLOT_P_H
