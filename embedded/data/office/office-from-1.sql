-- An office of version 1 told projects apart by their names alone, and versions of the past by their numbers. Its
-- functions go, so that no older program publishes by them. Statements are separated by lines that hold a semicolon
-- alone.

ALTER TABLE numbers ADD COLUMN project_id text COLLATE "C" NOT NULL DEFAULT ''
;
DROP FUNCTION publish(text, integer, bytea, bytea, text, text, jsonb)
;
DROP FUNCTION record_numbers(text, text, integer, jsonb)
;
DROP FUNCTION keep_number(text, text, text, text, jsonb)
;
