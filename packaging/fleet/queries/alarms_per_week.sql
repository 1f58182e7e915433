-- How often each alarm began, per engine and week (from Monday).
--   psql -v from=2026-01-01 -v to=2027-01-01 -f packaging/fleet/queries/alarms_per_week.sql fleet
-- from, to: the period, its end not included.

SELECT plant, location, date_trunc('week', at)::date AS week, text AS alarm, count(*) AS times
FROM fleet.comments JOIN fleet.engines ON engines.id = comments.engine
WHERE at >= :'from' AND at < :'to' AND kind = 'comment' AND text ~* 'alarm.* ON$'
GROUP BY plant, location, week, alarm
ORDER BY plant, location, week, alarm;
