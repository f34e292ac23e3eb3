#include "store/fitness/BodyComp.h"

#include <algorithm>
#include <cmath>

double CBodyComp::Siri(double density)
{
    return 495 / density - 450; // Siri 1956
}

double CBodyComp::Brozek(double density)
{
    return 457 / density - 414.2; // Brozek, Grande, Anderson & Keys 1963
}

CBodyFat CBodyComp::FromDensity(double density, char const* source)
{
    return {Limited(Siri(density)), density, source};
}

double CBodyComp::Limited(double percentFat)
{
    return std::isfinite(percentFat) ? std::clamp(percentFat, 0.0, 99.0) : 0.0;
}
