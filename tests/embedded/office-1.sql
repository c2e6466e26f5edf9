-- Makes an office one of version 1, as programs of that time left it. Statements are separated by lines that hold a
-- semicolon alone.

DROP FUNCTION note_project(text, text, jsonb)
;
DROP FUNCTION forget_project(text)
;
DROP TABLE projects
;
DROP FUNCTION publish(text, integer, bytea, bytea, bytea, text, text, text, jsonb)
;
DROP FUNCTION record_numbers(text, text, text, integer, jsonb)
;
DROP FUNCTION keep_number(text, text, text, text, text, jsonb)
;
ALTER TABLE numbers DROP COLUMN project_id
;
CREATE FUNCTION keep_number(
    the_configuration text, the_library text, the_project text, the_claimer text, the_item jsonb)
    RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
DECLARE
    is_kept boolean;
BEGIN
    PERFORM lock_numbers(the_configuration, the_library);
    INSERT INTO numbers AS mine (configuration, library, number, name, unit, unit_code, with_annex, cal_rule,
                                 project, claimer)
        SELECT the_configuration, the_library, number, name, unit, unit_code, with_annex, cal_rule,
            the_project, the_claimer
        FROM jsonb_to_record(the_item) AS item (
            number text, name text, unit text, unit_code integer, with_annex integer, cal_rule text)
        ON CONFLICT (configuration, library, number) DO UPDATE
            SET name = excluded.name, unit = excluded.unit, unit_code = excluded.unit_code,
                with_annex = excluded.with_annex, cal_rule = excluded.cal_rule, project = excluded.project,
                claimer = excluded.claimer, who = excluded.who, at = excluded.at, claimed_until = NULL
            WHERE mine.claimed_until IS NOT NULL AND
                (mine.claimer = excluded.claimer OR mine.claimed_until <= clock_timestamp());
    is_kept := FOUND;
    DELETE FROM numbers WHERE claimer = the_claimer AND claimed_until IS NOT NULL;
    RETURN is_kept;
END
$$
;
CREATE FUNCTION record_numbers(
    the_configuration text, the_project text, the_version integer, the_numbers jsonb) RETURNS jsonb
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
DECLARE
    collisions jsonb;
    last_numbers jsonb := coalesce((
        SELECT numbers FROM versions WHERE configuration = the_configuration AND number = the_version - 1), '[]');
BEGIN
    PERFORM lock_numbers(the_configuration, library) FROM (
        SELECT DISTINCT library COLLATE "C" AS library
        FROM jsonb_to_recordset(the_numbers) AS mine (library text) ORDER BY 1) AS libraries;
    WITH these AS (
        SELECT library, number, name, unit FROM jsonb_to_recordset(the_numbers) AS mine (
            library text, number text, name text, unit text)
    ), former AS (
        SELECT library, number, name, unit FROM jsonb_to_recordset(last_numbers) AS mine (
            library text, number text, name text, unit text)
    ), mine AS (
        SELECT * FROM these EXCEPT SELECT * FROM former
    ), given_up AS (
        SELECT * FROM former EXCEPT SELECT * FROM these
    )
    SELECT coalesce(jsonb_agg(jsonb_build_object(
            'library', mine.library, 'number', mine.number, 'name', mine.name, 'unit', mine.unit,
            'their_name', theirs.name, 'their_unit', theirs.unit, 'project', theirs.project)
            ORDER BY mine.library COLLATE "C", mine.number COLLATE "C"), '[]')
        INTO collisions
        FROM mine
        JOIN numbers AS theirs ON theirs.configuration = the_configuration AND
            theirs.library = mine.library AND theirs.number = mine.number AND
            theirs.project <> the_project AND theirs.claimed_until IS NULL AND
            (theirs.name <> mine.name OR theirs.unit <> mine.unit) AND
            (theirs.library, theirs.number, theirs.name, theirs.unit) NOT IN (SELECT * FROM given_up);
    IF collisions = '[]' THEN
        INSERT INTO numbers AS known (configuration, library, number, project, name, unit, version)
            SELECT DISTINCT ON (library, number) -- one of them where several items share it
                the_configuration, library, number, the_project, name, unit, the_version
            FROM jsonb_to_recordset(the_numbers) AS mine (library text, number text, name text, unit text)
            ON CONFLICT (configuration, library, number) DO UPDATE
                SET name = excluded.name, unit = excluded.unit, version = excluded.version,
                    claimed_until = NULL,
                    project = CASE WHEN known.claimed_until IS NULL THEN known.project
                        ELSE excluded.project END,
                    claimer = CASE WHEN known.claimed_until IS NULL THEN known.claimer ELSE '' END,
                    who = CASE WHEN known.claimed_until IS NULL THEN known.who ELSE excluded.who END,
                    at = CASE WHEN known.claimed_until IS NULL THEN known.at ELSE excluded.at END;
    END IF;
    RETURN collisions;
END
$$
;
CREATE FUNCTION publish(
    the_configuration text, the_base integer, the_content bytea, the_digest bytea, the_note text,
    the_project text, the_numbers jsonb,
    OUT ending text, OUT version integer, OUT collisions jsonb)
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp SET lock_timeout = '60s' AS $$
DECLARE
    removed boolean;
    newest integer := 0;
    same integer;
BEGIN
    version := 0;
    collisions := '[]';
    IF sha256(the_content) <> the_digest THEN
        RAISE EXCEPTION '内容与它的摘要不符';
    END IF;
    -- Only keepers create configurations.
    IF the_base = 0 AND has_function_privilege(session_user, 'set_removed(text, boolean)', 'EXECUTE') THEN
        INSERT INTO configurations (name) VALUES (the_configuration) ON CONFLICT DO NOTHING;
    END IF;
    SELECT is_removed INTO removed FROM configurations WHERE name = the_configuration FOR UPDATE;
    IF NOT FOUND OR removed THEN
        ending := 'missing';
        RETURN;
    END IF;
    SELECT coalesce(max(number), 0) INTO newest FROM versions WHERE configuration = the_configuration;
    SELECT max(number) INTO same FROM versions
        WHERE configuration = the_configuration AND digest = the_digest AND number >= the_base;
    version := coalesce(same, newest);
    IF same IS NOT NULL THEN
        ending := 'unchanged';
    ELSIF the_base < newest THEN
        ending := 'newer';
    ELSIF the_base > newest THEN
        RAISE EXCEPTION '没有版本 %，最新的是 %', the_base, newest;
    ELSE
        collisions := record_numbers(the_configuration, the_project, newest + 1, the_numbers);
        IF collisions <> '[]' THEN
            RAISE EXCEPTION USING ERRCODE = 'KQ001', MESSAGE = '清单编码冲突';
        END IF;
        INSERT INTO versions VALUES (
            the_configuration, newest + 1, newest, clock_timestamp(), session_user, the_project, the_note,
            the_numbers, the_digest, the_content);
        ending := 'published';
        version := newest + 1;
    END IF;
-- Undoes what was done above; the variables stay.
EXCEPTION WHEN SQLSTATE 'KQ001' THEN
    ending := 'collides';
END
$$
;
REVOKE ALL ON ALL ROUTINES IN SCHEMA ktqdde FROM PUBLIC
;
SELECT allow('editor', 'EXECUTE ON FUNCTION publish(text, integer, bytea, bytea, text, text, jsonb)')
;
SELECT allow('editor', 'EXECUTE ON FUNCTION keep_number(text, text, text, text, jsonb)')
;
UPDATE schema_version SET version = 1
;
