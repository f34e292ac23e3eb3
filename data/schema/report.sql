-- The queue of print jobs. Dates are seconds from 1899-12-30 00:00:00 local time, 0 = none.
CREATE TABLE reports (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    type INTEGER NOT NULL,
    parameter INTEGER NOT NULL,
    date_from INTEGER NOT NULL,
    date_to INTEGER NOT NULL,
    category TEXT NOT NULL,
    course TEXT NOT NULL,
    section TEXT NOT NULL
) STRICT;
