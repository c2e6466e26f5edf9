-- The bill numbers of an office's projects. Statements are separated by lines that hold a semicolon alone.
--
-- One row a number: claimed by a program until a time, so that a program that dies blocks nobody for long, or
-- kept for good by the project that took it first. The functions run with the rights of the owner, since nobody
-- else writes the table; times are the server's.

CREATE TABLE numbers (
    configuration text COLLATE "C" NOT NULL,
    library text COLLATE "C" NOT NULL,
    number text COLLATE "C" NOT NULL,
    name text NOT NULL,
    unit text NOT NULL,
    unit_code integer NOT NULL DEFAULT 1,
    with_annex integer NOT NULL DEFAULT 0,
    cal_rule text NOT NULL DEFAULT '',
    project text COLLATE "C" NOT NULL,
    claimer text COLLATE "C" NOT NULL DEFAULT '', -- tells the programs that claim from each other
    who text NOT NULL DEFAULT session_user,
    at timestamptz NOT NULL DEFAULT clock_timestamp(),
    claimed_until timestamptz, -- NULL for a number that is kept
    version integer NOT NULL DEFAULT 0, -- the last published one in which it stood
    PRIMARY KEY (configuration, library, number)
)
;
CREATE INDEX numbers_by_claimer ON numbers (claimer) WHERE claimed_until IS NOT NULL
;
-- Claims come and go; the record of changes tells what is kept.
CREATE TRIGGER record_insertion AFTER INSERT ON numbers
    FOR EACH ROW WHEN (NEW.claimed_until IS NULL) EXECUTE FUNCTION record_change()
;
CREATE TRIGGER record_update AFTER UPDATE ON numbers
    FOR EACH ROW WHEN (NEW.claimed_until IS NULL) EXECUTE FUNCTION record_change()
;
CREATE TRIGGER record_deletion AFTER DELETE ON numbers
    FOR EACH ROW WHEN (OLD.claimed_until IS NULL) EXECUTE FUNCTION record_change()
;

-- Until the end of the transaction nobody else takes a number of that library for that configuration.
CREATE FUNCTION lock_numbers(the_configuration text, the_library text) RETURNS void
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
BEGIN
    PERFORM pg_advisory_xact_lock(
        hashtextextended(the_configuration || U&'\000A' || the_library, 4771340));
END
$$
;
-- Claims numbers for a program, all or none, after it has given up its former claims. The items are an array of
-- {"number", "name", "unit", "unit_code", "with_annex", "cal_rule"}. False when one of the numbers is taken.
CREATE FUNCTION claim_numbers(
    the_configuration text, the_library text, the_project text, the_claimer text, the_items jsonb)
    RETURNS boolean
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    PERFORM lock_numbers(the_configuration, the_library);
    DELETE FROM numbers WHERE claimer = the_claimer AND claimed_until IS NOT NULL;
    DELETE FROM numbers WHERE configuration = the_configuration AND library = the_library AND
        claimed_until <= clock_timestamp();
    IF EXISTS (
        SELECT FROM numbers AS taken
        JOIN jsonb_to_recordset(the_items) AS item (number text) ON item.number = taken.number
        WHERE taken.configuration = the_configuration AND taken.library = the_library) THEN
        RETURN false;
    END IF;
    INSERT INTO numbers (configuration, library, number, name, unit, unit_code, with_annex, cal_rule, project,
                         claimer, claimed_until)
        SELECT the_configuration, the_library, number, name, unit, unit_code, with_annex, cal_rule,
            the_project, the_claimer, clock_timestamp() + interval '1 hour'
        FROM jsonb_to_recordset(the_items) AS item (
            number text, name text, unit text, unit_code integer, with_annex integer, cal_rule text);
    RETURN true;
END
$$
;
-- Keeps a number for the project for good and gives up the program's other claims. False when the claim has run
-- out and somebody else has the number.
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
CREATE FUNCTION release_claims(the_claimer text) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    DELETE FROM numbers WHERE claimer = the_claimer AND claimed_until IS NOT NULL;
END
$$
;
-- Records the numbers of a version that is being published, an array of {"library", "number", "name", "unit"},
-- while the configuration's row is locked. Gives those that another project has for something else, an array
-- of {"library", "number", "name", "unit", "their_name", "their_unit", "project"}; when there are any, nothing
-- has been recorded. A number that others merely claim becomes the publication's: it is in use now.
--
-- Whoever publishes has the last version before him. What stood in it already is nobody's collision, and a number
-- that stood in it and stands for something else alone now has been given another name on purpose.
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
SELECT allow('editor', 'EXECUTE ON FUNCTION claim_numbers(text, text, text, text, jsonb)')
;
SELECT allow('editor', 'EXECUTE ON FUNCTION keep_number(text, text, text, text, jsonb)')
;
SELECT allow('editor', 'EXECUTE ON FUNCTION release_claims(text)')
