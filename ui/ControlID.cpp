#include "ui/ControlID.h"

#include <QVariant>
#include <QWidget>

namespace
{

constexpr auto kProperty = "controlID";

} // namespace

void SetControlID(QWidget* widget, int id)
{
    widget->setProperty(kProperty, id);
}

int ControlID(QWidget const* widget)
{
    return widget->property(kProperty).toInt();
}
