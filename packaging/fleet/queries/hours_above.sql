-- How many hours a value was above a threshold, per engine.
--   psql -v from=2026-01-01 -v to=2027-01-01 -v value=tsignal -v threshold=100 -v longest=10 \
--        -f packaging/fleet/queries/hours_above.sql fleet
-- from, to: the period, its end not included. value: a column of fleet.records. longest: a record holds until
-- the engine's next one, but no longer than so many seconds; its last one holds for as long.

WITH held AS (
    SELECT engine, :"value" > :threshold AS above,
           least(extract(epoch FROM lead(at) OVER (PARTITION BY engine ORDER BY at, file, line) - at),
                 :longest) AS seconds
    FROM fleet.records
    WHERE at >= :'from' AND at < :'to'
)
SELECT plant, location, round(coalesce(sum(seconds) FILTER (WHERE above), 0) / 3600, 4) AS hours_above,
       round(coalesce(sum(seconds), 0) / 3600, 4) AS hours
FROM held JOIN fleet.engines ON engines.id = held.engine
GROUP BY plant, location
ORDER BY hours_above DESC, plant, location;
