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
    project_id text COLLATE "C" NOT NULL DEFAULT '', -- tells projects apart; '' if `project` alone is known
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
CREATE FUNCTION release_claims(the_claimer text) RETURNS void
LANGUAGE plpgsql SECURITY DEFINER SET search_path = ktqdde, pg_temp AS $$
BEGIN
    DELETE FROM numbers WHERE claimer = the_claimer AND claimed_until IS NOT NULL;
END
$$
;
SELECT allow('editor', 'EXECUTE ON FUNCTION claim_numbers(text, text, text, text, jsonb)')
;
SELECT allow('editor', 'EXECUTE ON FUNCTION release_claims(text)')
