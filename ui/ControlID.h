#pragma once

class QObject;

/// Gives a widget, or a timer of one, the control number by which documents and other programs of
/// the suite know it.
void SetControlID(QObject* object, int id);

/// The control number of an object, 0 when it has none.
int ControlID(QObject const* object);
