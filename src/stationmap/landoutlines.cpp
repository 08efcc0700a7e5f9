// SPDX-License-Identifier: MIT
#include "stationmap/landoutlines.h"

#include <QFile>

#include <utility>

// The format is described in resources/sources/make_land.py.

namespace {

constexpr double stepsPerDegree = 100.0;
constexpr int bitsPerByte = 7;
constexpr int valueMask = 0x7f;
constexpr int moreFollows = 0x80;

class NumberReader
{
public:
    explicit NumberReader(QByteArray data) : m_data(std::move(data)) {}

    bool atEnd() const { return m_at >= m_data.size(); }

    int next()
    {
        int number = 0;
        for (int shift = 0; !atEnd(); shift += bitsPerByte) {
            const int byte = static_cast<unsigned char>(m_data.at(m_at++));
            number |= (byte & valueMask) << shift;
            if (!(byte & moreFollows))
                break;
        }
        return number;
    }

    int nextDifference()
    {
        const int code = next();
        return code % 2 == 0 ? code / 2 : -(code + 1) / 2;
    }

private:
    QByteArray m_data;
    int m_at = 0;
};

} // namespace

std::vector<Outline> readLandOutlines()
{
    QFile file(QStringLiteral(":/maps/land.dat"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    NumberReader numbers(file.readAll());

    std::vector<Outline> outlines;
    int longitude = 0;
    int latitude = 0;
    while (!numbers.atEnd()) {
        Outline outline(numbers.next());
        for (UnitVector &point : outline) {
            longitude += numbers.nextDifference();
            latitude += numbers.nextDifference();
            point = unitVectorOf({latitude / stepsPerDegree, longitude / stepsPerDegree});
        }
        outlines.push_back(std::move(outline));
    }
    return outlines;
}
