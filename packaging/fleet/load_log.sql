-- Takes the rows that `load` has copied into the temporary tables: psql runs it within a transaction, with
-- `engine` and `file` as variables.

SELECT fleet.make_month(month) FROM (
    SELECT date_trunc('month', at) AS month FROM new_records
    UNION SELECT date_trunc('month', at) FROM new_curves
    UNION SELECT date_trunc('month', at) FROM new_comments
    UNION SELECT date_trunc('month', at) FROM new_events) AS months ORDER BY month \g /dev/null

INSERT INTO fleet.records (at, engine, file, line, tsignal, speed, tvoltage, teff_dc, teff_ac)
SELECT at, :'engine', :'file', line, tsignal, speed, tvoltage, teff_dc, teff_ac FROM new_records
ON CONFLICT DO NOTHING;
\echo records :ROW_COUNT

INSERT INTO fleet.curves (at, engine, file, line, record, samples)
SELECT at, :'engine', :'file', line, record, samples FROM new_curves
ON CONFLICT DO NOTHING;
\echo curves :ROW_COUNT

INSERT INTO fleet.comments (at, engine, file, line, kind, text)
SELECT at, :'engine', :'file', line, kind, text FROM new_comments
ON CONFLICT DO NOTHING;
\echo comments :ROW_COUNT

INSERT INTO fleet.events (at, file, line, text)
SELECT at, :'file', line, text FROM new_events
ON CONFLICT DO NOTHING;
\echo events :ROW_COUNT

UPDATE fleet.files SET
    bytes = :'bytes', content = :'content',
    record_line = greatest(record_line, (SELECT max(line) FROM new_records)),
    curve_line = greatest(curve_line, (SELECT max(line) FROM new_curves)),
    comment_line = greatest(comment_line, (SELECT max(line) FROM new_comments)),
    event_line = greatest(event_line, (SELECT max(line) FROM new_events))
WHERE id = :'file' AND bytes <= :'bytes';
