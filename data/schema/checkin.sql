-- Who is checked in now. Dates are seconds from 1899-12-30 00:00:00 local time, 0 = none.
CREATE TABLE check_ins (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL,
    workout_number INTEGER NOT NULL,
    first_name TEXT NOT NULL,
    last_name TEXT NOT NULL,
    check_in INTEGER NOT NULL
) STRICT;
CREATE INDEX check_ins_by_time ON check_ins (check_in);
CREATE INDEX check_ins_by_member ON check_ins (member_id);
