#pragma once

class QWidget;

/// Gives a widget the control number by which documents and other programs of the suite know it.
void SetControlID(QWidget* widget, int id);

/// The control number of a widget, 0 when it has none.
int ControlID(QWidget const* widget);
