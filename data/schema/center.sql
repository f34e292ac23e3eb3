-- The centre: who it is, what new enrolments start with, its stations and its class catalogue.
CREATE TABLE center (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    address1 TEXT NOT NULL,
    address2 TEXT NOT NULL,
    city TEXT NOT NULL,
    state TEXT NOT NULL,
    zip TEXT NOT NULL,
    phone TEXT NOT NULL,
    email TEXT NOT NULL,
    web TEXT NOT NULL,
    min_minutes INTEGER NOT NULL,
    min_circuits INTEGER NOT NULL,
    password_hash TEXT NOT NULL DEFAULT ''
) STRICT;

CREATE TABLE defaults (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    grade_status INTEGER NOT NULL,
    re_eval_bonuses INTEGER NOT NULL,
    other_bonuses INTEGER NOT NULL,
    flags INTEGER NOT NULL
) STRICT;

CREATE TABLE bonuses (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    points INTEGER NOT NULL
) STRICT;

-- Colours are blue * 65536 + green * 256 + red.
CREATE TABLE touch (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    panel_color INTEGER NOT NULL,
    frame_color INTEGER NOT NULL
) STRICT;

CREATE TABLE stations (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    abbreviation TEXT NOT NULL
) STRICT;

-- Pounds.
CREATE TABLE lift_stations (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    least_lift REAL NOT NULL,
    greatest_lift REAL NOT NULL
) STRICT;

CREATE TABLE categories (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    number INTEGER NOT NULL UNIQUE,
    name TEXT NOT NULL
) STRICT;

CREATE TABLE courses (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    number INTEGER NOT NULL UNIQUE,
    category INTEGER NOT NULL REFERENCES categories (number)
        ON UPDATE CASCADE ON DELETE CASCADE,
    name TEXT NOT NULL
) STRICT;
CREATE INDEX courses_of_category ON courses (category);

CREATE TABLE sections (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    number INTEGER NOT NULL UNIQUE,
    course INTEGER NOT NULL REFERENCES courses (number)
        ON UPDATE CASCADE ON DELETE CASCADE,
    name TEXT NOT NULL
) STRICT;
CREATE INDEX sections_of_course ON sections (course);
