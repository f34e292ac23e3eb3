#pragma once

/// Converts units of measure. Both factors are exact: an inch is 2.54 cm and a pound 0.45359237 kg
/// by definition.
class CConvert
{
public:
    virtual ~CConvert() = default;

    static double CelsiusToFahrenheit(double degrees) { return degrees * 1.8 + 32; }
    static double FahrenheitToCelsius(double degrees) { return (degrees - 32) / 1.8; }
    static double KilogramsToPounds(double kilograms) { return kilograms * 2.2046226218487757; }
    static double PoundsToKilograms(double pounds) { return pounds * 0.45359237; }
    static double InchesToCentimetres(double inches) { return inches * 2.54; }
};
