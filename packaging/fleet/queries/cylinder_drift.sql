-- How each cylinder's signal lies above the mean of its engine, and how that drifts.
--   psql -v from=2026-01-01 -v to=2027-01-01 -v record=REC2 -v half_width=3 \
--        -f packaging/fleet/queries/cylinder_drift.sql fleet
-- from, to: the period, its end not included. record: REC2, thermo curves, or REC3, angular acceleration.
-- half_width: samples on both sides of the one where the cylinder fires; a curve is taken as a ring.
--
-- A cylinder is told by its place in the firing order and its number there. above_mean is the mean of its
-- samples less that of the whole curve, in % of the latter; drift is by how much that grows in a week, by the
-- straight line through all curves. Logs whose header has no firing angles are left out.

WITH fired AS (
    SELECT id AS file, place, firing_order[place] AS cylinder,
           round(sum(angle) OVER (PARTITION BY id ORDER BY place) * 255::double precision
                 / CASE strokes WHEN 4 THEN 720 ELSE 360 END)::integer AS centre
    FROM fleet.files, unnest(firing_angles) WITH ORDINALITY AS fired (angle, place)
    WHERE place <= cylinders
), layouts AS (
    SELECT file, array_agg(place) AS places, array_agg(cylinder) AS cylinders, array_agg(centre) AS centres
    FROM fired WHERE centre < 256
    GROUP BY file
), parts AS (
    SELECT engine, place, cylinder, extract(epoch FROM at) / 604800 AS week, above
    FROM fleet.curves JOIN layouts USING (file)
    CROSS JOIN LATERAL (SELECT avg(sample) AS mean FROM unnest(samples) AS sample) AS whole
    CROSS JOIN LATERAL unnest(places, cylinders, centres) AS fires (place, cylinder, centre)
    CROSS JOIN LATERAL (SELECT 100 * (avg(samples[(centre + step + 256) % 256 + 1]) - mean) / mean AS above
                        FROM generate_series(-:half_width, :half_width) AS step) AS part
    WHERE at >= :'from' AND at < :'to' AND record = :'record' AND mean > 0
)
SELECT plant, location, place, cylinder, count(*) AS curves, round(avg(above), 2) AS above_mean,
       round(regr_slope(above, week)::numeric, 3) AS drift
FROM parts JOIN fleet.engines ON engines.id = parts.engine
GROUP BY plant, location, place, cylinder
ORDER BY plant, location, place, cylinder;
