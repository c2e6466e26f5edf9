-- The bill numbers of an office's projects. Statements are separated by lines that hold a semicolon alone.

-- The numbers that stood in a published version, by the project that brought them in.
CREATE TABLE numbers (
    configuration text COLLATE "C" NOT NULL,
    library text COLLATE "C" NOT NULL,
    number text COLLATE "C" NOT NULL,
    project text COLLATE "C" NOT NULL,
    name text NOT NULL,
    unit text NOT NULL,
    version integer NOT NULL DEFAULT 0, -- the last one in which it stood
    PRIMARY KEY (configuration, library, number, project)
)
;
SELECT record_changes_of('numbers')
;
-- Records the numbers of a version that is being published, an array of {"library", "number", "name", "unit"},
-- while the configuration's row is locked. Gives those that another project has for something else, an array
-- of {"library", "number", "name", "unit", "their_name", "their_unit", "project"}; when there are any, whatever
-- was recorded is undone by the caller.
CREATE FUNCTION record_numbers(
    the_configuration text, the_project text, the_version integer, the_numbers jsonb) RETURNS jsonb
LANGUAGE plpgsql SET search_path = ktqdde, pg_temp AS $$
DECLARE
    collisions jsonb;
BEGIN
    SELECT coalesce(jsonb_agg(jsonb_build_object(
            'library', mine.library, 'number', mine.number, 'name', mine.name, 'unit', mine.unit,
            'their_name', theirs.name, 'their_unit', theirs.unit, 'project', theirs.project)
            ORDER BY mine.library COLLATE "C", mine.number COLLATE "C"), '[]')
        INTO collisions
        FROM jsonb_to_recordset(the_numbers) AS mine (library text, number text, name text, unit text)
        JOIN numbers AS theirs ON theirs.configuration = the_configuration AND
            theirs.library = mine.library AND theirs.number = mine.number AND theirs.project <> the_project AND
            (theirs.name <> mine.name OR theirs.unit <> mine.unit);
    IF collisions = '[]' THEN
        INSERT INTO numbers (configuration, library, number, project, name, unit, version)
            SELECT DISTINCT ON (library, number)
                the_configuration, library, number, the_project, name, unit, the_version
            FROM jsonb_to_recordset(the_numbers) AS mine (library text, number text, name text, unit text)
            ON CONFLICT (configuration, library, number, project)
                DO UPDATE SET name = excluded.name, unit = excluded.unit, version = excluded.version;
    END IF;
    RETURN collisions;
END
$$
