-- Members and their records. Dates are seconds from 1899-12-30 00:00:00 local time, 0 = none.
-- Every row of a member goes with the member's row in "members", and follows a changed number.
CREATE TABLE members (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL UNIQUE CHECK (member_id BETWEEN 1 AND 999999999),
    workout_number INTEGER NOT NULL UNIQUE CHECK (workout_number BETWEEN 1 AND 999999999),
    first_name TEXT NOT NULL,
    middle_initial TEXT NOT NULL,
    last_name TEXT NOT NULL,
    status INTEGER NOT NULL
) STRICT;
CREATE INDEX members_by_name ON members (last_name COLLATE NOCASE, first_name COLLATE NOCASE,
    middle_initial COLLATE NOCASE);

CREATE TABLE profiles (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL UNIQUE REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    address TEXT NOT NULL,
    city TEXT NOT NULL,
    state TEXT NOT NULL,
    zip TEXT NOT NULL,
    phone TEXT NOT NULL,
    email TEXT NOT NULL,
    emergency_name TEXT NOT NULL,
    emergency_phone TEXT NOT NULL,
    physician TEXT NOT NULL,
    release INTEGER NOT NULL,
    employee INTEGER NOT NULL,
    birthday INTEGER NOT NULL,
    sex INTEGER NOT NULL,
    goals INTEGER NOT NULL,
    medical_history INTEGER NOT NULL
) STRICT;

CREATE TABLE enrollments (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL UNIQUE REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    enroll_date INTEGER NOT NULL,
    expire_date INTEGER NOT NULL,
    period INTEGER NOT NULL,
    incentive INTEGER NOT NULL
) STRICT;

CREATE TABLE classes (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    class_index INTEGER NOT NULL,
    category TEXT NOT NULL,
    course TEXT NOT NULL,
    section TEXT NOT NULL,
    grade_status INTEGER NOT NULL,
    orientation INTEGER NOT NULL,
    re_evaluations INTEGER NOT NULL,
    other_bonuses INTEGER NOT NULL
) STRICT;
CREATE INDEX classes_of_member ON classes (member_id);
CREATE INDEX classes_by_class ON classes (category COLLATE NOCASE, course COLLATE NOCASE,
    section COLLATE NOCASE);

CREATE TABLE messages (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    message TEXT NOT NULL
) STRICT;
CREATE INDEX messages_of_member ON messages (member_id);

CREATE TABLE workouts (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    workout_ok INTEGER NOT NULL,
    class_index INTEGER NOT NULL,
    check_in INTEGER NOT NULL,
    check_out INTEGER NOT NULL,
    circuits INTEGER NOT NULL,
    station1 INTEGER NOT NULL,
    station2 INTEGER NOT NULL,
    station3 INTEGER NOT NULL,
    station4 INTEGER NOT NULL,
    station5 INTEGER NOT NULL,
    station6 INTEGER NOT NULL,
    station7 INTEGER NOT NULL,
    station8 INTEGER NOT NULL,
    station9 INTEGER NOT NULL,
    station10 INTEGER NOT NULL,
    station11 INTEGER NOT NULL,
    station12 INTEGER NOT NULL
) STRICT;
CREATE INDEX workouts_of_member ON workouts (member_id, check_in);
CREATE INDEX workouts_by_time ON workouts (check_in);

-- Inches, pounds, beats per minute, mmHg, seconds.
CREATE TABLE evaluations (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    eval_id INTEGER NOT NULL UNIQUE,
    member_id INTEGER NOT NULL REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    eval_date INTEGER NOT NULL,
    class_index INTEGER NOT NULL,
    height REAL NOT NULL,
    weight REAL NOT NULL,
    activity_level INTEGER NOT NULL,
    resting_heart_rate INTEGER NOT NULL,
    systolic INTEGER NOT NULL,
    diastolic INTEGER NOT NULL,
    trunk_flexion REAL NOT NULL,
    sit_ups INTEGER NOT NULL,
    ab_crunches INTEGER NOT NULL,
    step_test INTEGER NOT NULL,
    run_seconds INTEGER NOT NULL,
    ergometer INTEGER NOT NULL
) STRICT;
CREATE INDEX evaluations_of_member ON evaluations (member_id, eval_date);
CREATE INDEX evaluations_by_date ON evaluations (eval_date);

-- Millimetres.
CREATE TABLE skinfolds (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    eval_id INTEGER NOT NULL UNIQUE REFERENCES evaluations (eval_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    percent_fat REAL NOT NULL,
    thigh REAL NOT NULL,
    chest REAL NOT NULL,
    abdomen REAL NOT NULL,
    triceps REAL NOT NULL,
    suprailiac REAL NOT NULL,
    midaxillary REAL NOT NULL,
    subscapular REAL NOT NULL
) STRICT;

-- Pounds, by the place of the station in the circuit.
CREATE TABLE lifts (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    eval_id INTEGER NOT NULL UNIQUE REFERENCES evaluations (eval_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    lift1 REAL NOT NULL,
    lift2 REAL NOT NULL,
    lift3 REAL NOT NULL,
    lift4 REAL NOT NULL,
    lift5 REAL NOT NULL,
    lift6 REAL NOT NULL,
    lift7 REAL NOT NULL,
    lift8 REAL NOT NULL,
    lift9 REAL NOT NULL,
    lift10 REAL NOT NULL,
    lift11 REAL NOT NULL,
    lift12 REAL NOT NULL,
    lift13 REAL NOT NULL,
    lift14 REAL NOT NULL,
    lift15 REAL NOT NULL,
    lift16 REAL NOT NULL,
    lift17 REAL NOT NULL,
    lift18 REAL NOT NULL,
    lift19 REAL NOT NULL,
    lift20 REAL NOT NULL,
    lift21 REAL NOT NULL,
    lift22 REAL NOT NULL,
    lift23 REAL NOT NULL,
    lift24 REAL NOT NULL
) STRICT;

-- Inches, pounds, millimetres; temperature and weights in water as entered, by the bits of units.
CREATE TABLE body_compositions (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    member_id INTEGER NOT NULL REFERENCES members (member_id)
        ON UPDATE CASCADE ON DELETE CASCADE,
    body_comp_date INTEGER NOT NULL,
    class_index INTEGER NOT NULL,
    height REAL NOT NULL,
    weight REAL NOT NULL,
    activity_level INTEGER NOT NULL,
    method INTEGER NOT NULL,
    percent_fat REAL NOT NULL,
    waist REAL NOT NULL,
    wrist REAL NOT NULL,
    hip REAL NOT NULL,
    thigh REAL NOT NULL,
    chest REAL NOT NULL,
    abdomen REAL NOT NULL,
    triceps REAL NOT NULL,
    suprailiac REAL NOT NULL,
    midaxillary REAL NOT NULL,
    subscapular REAL NOT NULL,
    water_temperature REAL NOT NULL,
    wet_weight REAL NOT NULL,
    tare_weight REAL NOT NULL,
    units INTEGER NOT NULL
) STRICT;
CREATE INDEX body_compositions_of_member ON body_compositions (member_id, body_comp_date);
CREATE INDEX body_compositions_by_date ON body_compositions (body_comp_date);

CREATE VIEW member_view AS
SELECT m.id AS id, m.member_id AS member_id, e.expire_date AS expire_date,
    m.workout_number AS workout_number, m.first_name AS first_name,
    m.middle_initial AS middle_initial, m.last_name AS last_name, m.status AS status,
    p.address AS address, p.city AS city, p.state AS state, p.zip AS zip,
    p.birthday AS birthday, p.sex AS sex,
    p.phone AS phone, p.email AS email, p.physician AS physician, p.release AS release,
    p.employee AS employee, p.goals AS goals, p.medical_history AS medical_history,
    e.enroll_date AS enroll_date, e.period AS period, e.incentive AS incentive
FROM members AS m
LEFT JOIN profiles AS p ON p.member_id = m.member_id
LEFT JOIN enrollments AS e ON e.member_id = m.member_id;

-- A member once for each class.
CREATE VIEW member_class_view AS
SELECT c.id AS id, m.member_id AS member_id, e.expire_date AS expire_date,
    m.workout_number AS workout_number, m.first_name AS first_name,
    m.middle_initial AS middle_initial, m.last_name AS last_name, m.status AS status,
    p.address AS address, p.city AS city, p.state AS state, p.zip AS zip,
    p.birthday AS birthday, p.sex AS sex,
    p.phone AS phone, p.email AS email, p.physician AS physician, p.release AS release,
    p.employee AS employee, p.goals AS goals, p.medical_history AS medical_history,
    e.enroll_date AS enroll_date, e.period AS period, e.incentive AS incentive,
    c.class_index AS class_index, c.category AS category, c.course AS course,
    c.section AS section
FROM classes AS c
JOIN members AS m ON m.member_id = c.member_id
LEFT JOIN profiles AS p ON p.member_id = m.member_id
LEFT JOIN enrollments AS e ON e.member_id = m.member_id;

CREATE VIEW evaluation_view AS
SELECT e.id AS id, e.eval_id AS eval_id, s.percent_fat AS percent_fat, e.member_id AS member_id,
    e.eval_date AS eval_date, e.class_index AS class_index, e.height AS height,
    e.weight AS weight, e.activity_level AS activity_level,
    e.resting_heart_rate AS resting_heart_rate, e.systolic AS systolic,
    e.diastolic AS diastolic, e.trunk_flexion AS trunk_flexion, e.sit_ups AS sit_ups,
    e.ab_crunches AS ab_crunches, e.step_test AS step_test, e.run_seconds AS run_seconds,
    e.ergometer AS ergometer,
    l.lift1 AS lift1, l.lift2 AS lift2, l.lift3 AS lift3,
    l.lift4 AS lift4, l.lift5 AS lift5, l.lift6 AS lift6,
    l.lift7 AS lift7, l.lift8 AS lift8, l.lift9 AS lift9,
    l.lift10 AS lift10, l.lift11 AS lift11, l.lift12 AS lift12,
    l.lift13 AS lift13, l.lift14 AS lift14, l.lift15 AS lift15,
    l.lift16 AS lift16, l.lift17 AS lift17, l.lift18 AS lift18,
    l.lift19 AS lift19, l.lift20 AS lift20, l.lift21 AS lift21,
    l.lift22 AS lift22, l.lift23 AS lift23, l.lift24 AS lift24
FROM evaluations AS e
LEFT JOIN skinfolds AS s ON s.eval_id = e.eval_id
LEFT JOIN lifts AS l ON l.eval_id = e.eval_id;
