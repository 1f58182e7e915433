-- Begins a transaction for a file: finds or makes its row and its engine's, into the variables `file` and
-- `engine`, and makes the temporary tables. Who loads the same file at the same time waits here.

BEGIN;
INSERT INTO fleet.engines (plant, location) SELECT :'plant', :'location' WHERE :'location' <> ''
ON CONFLICT DO NOTHING;
INSERT INTO fleet.files (plant, name, beginning, engine, strokes, cylinders, rated_speed, firing_order,
                         firing_angles)
VALUES (:'plant', :'name', :'beginning',
        (SELECT id FROM fleet.engines WHERE plant = :'plant' AND location = :'location'),
        nullif(:'strokes', '')::integer, nullif(:'cylinders', '')::integer,
        nullif(:'rated_speed', '')::integer, :'firing_order', :'firing_angles')
ON CONFLICT (plant, name, beginning) DO UPDATE SET name = excluded.name
RETURNING id AS file, coalesce(engine, 0) AS engine \gset

CREATE TEMPORARY TABLE new_records (line integer, at timestamp(0), tsignal smallint, speed smallint,
    tvoltage integer, teff_dc smallint, teff_ac smallint) ON COMMIT DROP;
CREATE TEMPORARY TABLE new_curves (line integer, at timestamp(0), record text, samples integer[])
    ON COMMIT DROP;
CREATE TEMPORARY TABLE new_comments (line integer, at timestamp(0), kind text, text text) ON COMMIT DROP;
CREATE TEMPORARY TABLE new_events (line integer, at timestamp(0), text text) ON COMMIT DROP;
