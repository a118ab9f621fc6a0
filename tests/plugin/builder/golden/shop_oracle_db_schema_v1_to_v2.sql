
DROP TABLE archive;
DROP TABLE region;
ALTER TABLE t_client RENAME TO t_customer;
ALTER TABLE t_customer DROP COLUMN cache;
ALTER TABLE t_customer DROP COLUMN region_id;
ALTER TABLE t_customer RENAME COLUMN mail TO email;
ALTER TABLE t_customer RENAME COLUMN sum TO balance;
ALTER TABLE t_customer ADD state INTEGER NOT NULL;
ALTER TABLE t_customer ADD country_code CLOB;

ALTER TABLE t_customer ADD recruiter_id INTEGER;
ALTER TABLE t_customer ADD email CLOB;
ALTER TABLE t_customer ADD birthday DATE;
DROP INDEX idx_t_client_address_city;
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
ALTER TABLE t_customer ADD external CLOB;
ALTER TABLE t_customer ADD unkeyed_ref CLOB;
CREATE TABLE country (code VARCHAR2(4000) NOT NULL PRIMARY KEY, label VARCHAR2(4000));


ALTER TABLE order_line RENAME COLUMN line_no TO line_code;
ALTER TABLE order_line DROP COLUMN lat;
ALTER TABLE order_line DROP COLUMN lon;
ALTER TABLE order_line ADD lat FLOAT;
ALTER TABLE order_line ADD lon FLOAT;
ALTER TABLE order_line ADD alt FLOAT;
DROP INDEX idx_order_line_lat;
DROP INDEX idx_order_line_lon;

ALTER TABLE order_line ADD origin_code CLOB;
CREATE TABLE all_types (c_bool SMALLINT, c_zk_bool SMALLINT, c_short SMALLINT, c_long_long INTEGER, c_float FLOAT, c_long_double FLOAT, c_qint8 SMALLINT, c_quint16 INTEGER, c_quint64 INTEGER, c_uuid VARCHAR2(4000), c_time DATE, c_datetime TIMESTAMP, c_bytes BLOB, c_neutral VARCHAR2(14));
CREATE TABLE shipment_with_a_long_name (id INTEGER NOT NULL PRIMARY KEY, gross|net INTEGER, order_id INTEGER, line_code CLOB, archive_id INTEGER);
CREATE SEQUENCE seq_inc_shipment_with_a_long_name START WITH 1 INCREMENT BY 1;
CREATE OR REPLACE TRIGGER trigger_inc_shipment_with_a_long_name
	BEFORE INSERT OR UPDATE OF id ON shipment_with_a_long_name
	FOR EACH ROW
	BEGIN
		IF ( :NEW.id = 0 OR :NEW.id IS NULL ) THEN
			SELECT seq_inc_shipment_with_a_long_name.NEXTVAL INTO :NEW.id FROM DUAL;
		END IF;
	END;
	/

CREATE TABLE counted_pair (a INTEGER NOT NULL, b INTEGER NOT NULL, CONSTRAINT pk_counted_pair_a_b PRIMARY KEY (a, b));
CREATE SEQUENCE seq_inc_counted_pair START WITH 1 INCREMENT BY 1;
CREATE OR REPLACE TRIGGER trigger_inc_counted_pair
	BEFORE INSERT OR UPDATE OF a|b ON counted_pair
	FOR EACH ROW
	BEGIN
		IF ( :NEW.a|b = 0 OR :NEW.a|b IS NULL ) THEN
			SELECT seq_inc_counted_pair.NEXTVAL INTO :NEW.a|b FROM DUAL;
		END IF;
	END;
	/

CREATE TABLE bare ();
CREATE TABLE order_line_country (country_code VARCHAR2(4000), order_id INTEGER, line_code VARCHAR2(4000));
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_ ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_ ON shipment_with_a_long_name (net);
ALTER TABLE t_client DROP CONSTRAINT fk_t_client_region_id;
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (unkeyed_ref) REFERENCES all_types ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE order_line_region DROP CONSTRAINT fk_order_line_regions;
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE order_line ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (origin_code) REFERENCES country (code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_o FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_a FOREIGN KEY (address_id) REFERENCES t_customer (customer_id);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_a FOREIGN KEY (archive_id) REFERENCES archive (id);

