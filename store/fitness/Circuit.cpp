#include "store/fitness/Circuit.h"

#include "store/sets/DAOLiftStn.h"

#include <algorithm>

void CCircuit::Load()
{
    *this = {};
    CDAOLiftStn stations;
    int const count = std::min(stations.OpenSet(true), int(kMostStations));
    for (int i = 0; i < count; ++i) {
        m_arrStnName.push_back(stations.m_strStnName);
        m_arrStnMinLift.push_back(stations.m_dMinLift);
        m_arrStnMaxLift.push_back(stations.m_dMaxLift);
        stations.Op(CDAOEFSet::opMoveNext);
    }
    stations.Op(CDAOEFSet::opClose);
    m_nNumStations = count;
}

double CCircuit::GetWorkWeight(int station, double lift, int percentage) const
{
    if (station < 0 || station >= m_nNumStations) {
        return 0.0;
    }
    // Dividing last keeps whole results whole: 90 at 70 % is 63, not a little less.
    return lift * percentage / 100;
}
