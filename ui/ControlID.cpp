#include "ui/ControlID.h"

#include <QObject>
#include <QVariant>

namespace
{

constexpr auto kProperty = "controlID";

} // namespace

void SetControlID(QObject* object, int id)
{
    object->setProperty(kProperty, id);
}

int ControlID(QObject const* object)
{
    return object->property(kProperty).toInt();
}
