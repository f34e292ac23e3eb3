-- What the report server knows of a job, for the console's inserts as of a new one. Times are Unix
-- seconds, UTC, 0 = none: a lease is not to grow or shrink with the local time.
ALTER TABLE reports ADD COLUMN state INTEGER NOT NULL DEFAULT 0;
ALTER TABLE reports ADD COLUMN attempts INTEGER NOT NULL DEFAULT 0;
ALTER TABLE reports ADD COLUMN claim TEXT NOT NULL DEFAULT '';
ALTER TABLE reports ADD COLUMN lease_end INTEGER NOT NULL DEFAULT 0;
ALTER TABLE reports ADD COLUMN not_before INTEGER NOT NULL DEFAULT 0;
ALTER TABLE reports ADD COLUMN reason TEXT NOT NULL DEFAULT '';
ALTER TABLE reports ADD COLUMN output TEXT NOT NULL DEFAULT '';
ALTER TABLE reports ADD COLUMN finished INTEGER NOT NULL DEFAULT 0;
CREATE INDEX reports_state ON reports (state);
