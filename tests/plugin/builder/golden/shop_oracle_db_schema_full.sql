
CREATE TABLE t_customer (customer_id INTEGER NOT NULL PRIMARY KEY, email VARCHAR2(4000) NOT NULL UNIQUE, balance DECIMAL(12,2), state INTEGER NOT NULL, birthday DATE, address.city CLOB, phone VARCHAR2(4000), external CLOB, deleted_at TEXT, country_code CLOB, recruiter_id INTEGER, unkeyed_ref );
CREATE SEQUENCE seq_inc_t_customer START WITH 1 INCREMENT BY 1;
CREATE OR REPLACE TRIGGER trigger_inc_t_customer
	BEFORE INSERT OR UPDATE OF customer_id ON t_customer
	FOR EACH ROW
	BEGIN
		IF ( :NEW.customer_id = 0 OR :NEW.customer_id IS NULL ) THEN
			SELECT seq_inc_t_customer.NEXTVAL INTO :NEW.customer_id FROM DUAL;
		END IF;
	END;
	/

CREATE TABLE country (code VARCHAR2(4000) NOT NULL PRIMARY KEY, label VARCHAR2(4000));
CREATE TABLE tag (tag_id INTEGER NOT NULL PRIMARY KEY, word CLOB NOT NULL);
CREATE SEQUENCE seq_inc_tag START WITH 1 INCREMENT BY 1;
CREATE OR REPLACE TRIGGER trigger_inc_tag
	BEFORE INSERT OR UPDATE OF tag_id ON tag
	FOR EACH ROW
	BEGIN
		IF ( :NEW.tag_id = 0 OR :NEW.tag_id IS NULL ) THEN
			SELECT seq_inc_tag.NEXTVAL INTO :NEW.tag_id FROM DUAL;
		END IF;
	END;
	/

CREATE TABLE order_line (order_id INTEGER NOT NULL, line_code VARCHAR2(4000) NOT NULL, lat|lon|alt FLOAT, origin_code CLOB, CONSTRAINT pk_order_line_order_id_line_co PRIMARY KEY (order_id, line_code));
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
CREATE TABLE customer_tag (customer_id INTEGER, tag_id INTEGER);
CREATE TABLE order_line_country (country_code VARCHAR2(4000), order_id INTEGER, line_code VARCHAR2(4000));
CREATE INDEX idx_t_customer_email ON t_customer (email);
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
CREATE INDEX idx_t_customer_country_code ON t_customer (country_code);
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_ ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_ ON shipment_with_a_long_name (net);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE customer_tag ADD CONSTRAINT fk_t_customer_tags FOREIGN KEY (customer_id) REFERENCES t_customer (customer_id);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (unkeyed_ref) REFERENCES all_types ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE customer_tag ADD CONSTRAINT fk_tag_customers FOREIGN KEY (tag_id) REFERENCES tag (tag_id);
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE order_line ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (origin_code) REFERENCES country (code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_o FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_a FOREIGN KEY (address_id) REFERENCES t_customer (customer_id);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_a FOREIGN KEY (archive_id) REFERENCES archive (id);

