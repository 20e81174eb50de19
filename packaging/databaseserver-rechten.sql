-- Rechten op de gedeelde database van een zender: voor planners (lezen en wijzigen, geen tabellen maken) en voor
-- programma's die alleen lezen. Mag telkens opnieuw, ook nadat er een zender bij kwam.
--
--   psql -v schema=OvalistoServer3 -f databaseserver-rechten.sql stations
--
-- Gebruikers worden daarna lid:  GRANT spotrooster_planner TO els;   GRANT spotrooster_lezer TO rapporten;
\set ON_ERROR_STOP on
SELECT 'CREATE ROLE spotrooster_planner NOLOGIN'
 WHERE NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'spotrooster_planner') \gexec
SELECT 'CREATE ROLE spotrooster_lezer NOLOGIN'
 WHERE NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'spotrooster_lezer') \gexec

BEGIN;
REVOKE ALL ON SCHEMA :"schema" FROM PUBLIC;
GRANT USAGE ON SCHEMA :"schema" TO spotrooster_planner, spotrooster_lezer;

GRANT SELECT, INSERT, UPDATE, DELETE
   ON :"schema"."tblItems", :"schema"."tblItemSpots", :"schema"."tblItemPingles", :"schema"."tblItemsItemSpots"
   TO spotrooster_planner;
GRANT SELECT
   ON :"schema"."tblItems", :"schema"."tblItemSpots", :"schema"."tblItemPingles", :"schema"."tblItemsItemSpots",
      :"schema".spotrooster_turn, :"schema".spotrooster_tables
   TO spotrooster_lezer;

-- Wie schrijft, neemt een beurt en noteert zijn wijziging.
GRANT SELECT, UPDATE (one) ON :"schema".spotrooster_turn TO spotrooster_planner;
GRANT SELECT ON :"schema".spotrooster_tables TO spotrooster_planner;
GRANT SELECT, INSERT, DELETE ON :"schema".spotrooster_change TO spotrooster_planner;

-- Waar bijgehouden wordt welke exports verwerkt zijn en welke uitzendingen geteld. De eerste keer maakt de eigenaar van
-- het schema deze tabellen (spotrooster-db apply, spotrooster-db played --aan); voer dit bestand daarna nog eens uit.
SELECT format('GRANT SELECT, INSERT, UPDATE, DELETE ON %I.%I TO spotrooster_planner', schemaname, tablename)
  FROM pg_tables
 WHERE schemaname = :'schema' AND tablename IN ('tblVerwerkt', 'tblVerwerktNummers', 'tblVerwerktBotsingen',
                                                       'tblUitzendingen', 'cdeInstellingen') \gexec
COMMIT;
