# scripted-user driver (zr_test_driver)
