
DROP TABLE archive;
DROP TABLE region;
ALTER TABLE t_client RENAME TO t_customer;
ALTER TABLE t_customer DROP COLUMN cache;
ALTER TABLE t_customer DROP COLUMN region_id;
ALTER TABLE t_customer RENAME COLUMN mail TO email;
ALTER TABLE t_customer RENAME COLUMN sum TO balance;
ALTER TABLE t_customer ADD COLUMN state INTEGER NOT NULL;
ALTER TABLE t_customer ADD COLUMN country_code TEXT;

ALTER TABLE t_customer ADD COLUMN recruiter_id INTEGER;
ALTER TABLE t_customer ADD COLUMN email TEXT;
ALTER TABLE t_customer ADD COLUMN birthday DATE;
DROP INDEX idx_t_client_address_city ON t_customer;
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
ALTER TABLE t_customer ADD COLUMN external TEXT;
ALTER TABLE t_customer ADD COLUMN unkeyed_ref TEXT;
CREATE TABLE country (code TEXT NOT NULL PRIMARY KEY, label TEXT);


ALTER TABLE order_line RENAME COLUMN line_no TO line_code;
ALTER TABLE order_line DROP COLUMN lat;
ALTER TABLE order_line DROP COLUMN lon;
ALTER TABLE order_line ADD COLUMN lat FLOAT;
ALTER TABLE order_line ADD COLUMN lon FLOAT;
ALTER TABLE order_line ADD COLUMN alt FLOAT;
DROP INDEX idx_order_line_lat ON order_line;
DROP INDEX idx_order_line_lon ON order_line;

ALTER TABLE order_line ADD COLUMN origin_code TEXT;
CREATE TABLE all_types (c_bool SMALLINT, c_zk_bool SMALLINT, c_short SMALLINT, c_long_long INTEGER, c_float FLOAT, c_long_double FLOAT, c_qint8 INTEGER, c_quint16 INTEGER, c_quint64 INTEGER, c_uuid TEXT, c_time TIME, c_datetime TIMESTAMP, c_bytes BLOB, c_neutral TEXT);
CREATE TABLE shipment_with_a_long_name (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, gross|net INTEGER, order_id INTEGER, line_code TEXT, archive_id INTEGER);
CREATE TABLE counted_pair (a INTEGER NOT NULL AUTOINCREMENT, b INTEGER NOT NULL AUTOINCREMENT, PRIMARY KEY (a, b));
CREATE TABLE bare ();
CREATE TABLE order_line_country (country_code TEXT, order_id INTEGER, line_code TEXT);
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_gross ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_net ON shipment_with_a_long_name (net);
ALTER TABLE t_client DROP CONSTRAINT fk_t_client_region_id;
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (unkeyed_ref) REFERENCES all_types ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE order_line_region DROP CONSTRAINT fk_order_line_regions;
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE order_line ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (origin_code) REFERENCES country (code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_order_id_line_code FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_address_id FOREIGN KEY (address_id) REFERENCES t_customer (customer_id);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_archive_id FOREIGN KEY (archive_id) REFERENCES archive (id);

