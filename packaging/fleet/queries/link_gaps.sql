-- When the link to an Evaluator was lost, for how long, the longest first.
--   psql -v from=2026-01-01 -v to=2027-01-01 -v least=60 -f packaging/fleet/queries/link_gaps.sql fleet
-- from, to: the period, its end not included. least: seconds; shorter gaps are left out.
--
-- A gap ends when the log says that the Evaluator is connected again, or that the measurement ended.

WITH turns AS (
    SELECT engine, at AS lost, text, lead(at) OVER (PARTITION BY engine ORDER BY at, file, line) AS back
    FROM fleet.comments
    WHERE at >= :'from' AND at < :'to'
      AND text IN ('Evaluator not connected', 'Evaluator connected', 'Measure Stopped')
)
SELECT plant, location, lost, back, extract(epoch FROM back - lost)::integer AS seconds
FROM turns JOIN fleet.engines ON engines.id = turns.engine
WHERE text = 'Evaluator not connected' AND back - lost >= :least * interval '1 second'
ORDER BY seconds DESC, plant, location, lost, back;
