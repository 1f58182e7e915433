-- The cycles of a month with the greatest swing from their lowest to their highest sample.
--   psql -v month=2026-07-01 -v record=REC2 -v cycles=20 -f packaging/fleet/queries/worst_cycles.sql fleet
-- month: its first day. record: REC2, thermo curves, or REC3, angular acceleration. cycles: how many to tell.
-- File and line tell where in which log the cycle stands.

WITH swings AS (
    SELECT engine, file, line, at,
           (SELECT max(sample) - min(sample) FROM unnest(samples) AS sample) AS swing
    FROM fleet.curves
    WHERE at >= :'month' AND at < :'month'::date + interval '1 month' AND record = :'record'
)
SELECT engines.plant, location, at, swing, name AS file, line
FROM swings JOIN fleet.engines ON engines.id = swings.engine JOIN fleet.files ON files.id = swings.file
ORDER BY swing DESC, engines.plant, location, at, line
LIMIT :cycles;
