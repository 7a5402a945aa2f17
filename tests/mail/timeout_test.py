"""The time-out setting in the real registry, with a relay that never says a word."""

import pytest

from timeout_setting import VALUE, TimeoutSetting


@pytest.fixture
def setting(wine_environment):
    setting = TimeoutSetting(wine_environment)
    setting.remove()
    yield setting
    setting.remove()


def seconds_of_silence(mailer, relay) -> float:
    outcome = mailer.send(gateway=relay.address)
    assert outcome.exit_code == 1
    assert outcome.output.replace(b"\r\n", b"\n").splitlines()[1:] == [
        b"recv error 10004", b"Failed: 0x80004005 (E_FAIL)"]
    return relay.next_session().seconds


# 100 ms are the least, whatever less is asked for.
@pytest.mark.parametrize("text, seconds", [("1", 0.1), ("50", 0.1), ("1500", 1.5)])
def test_silence_lasts_as_long_as_the_setting_says(mailer, silent_relay, setting, text, seconds):
    setting.store(text)
    # The relay sees a connection a moment later than the program, and seldom each time.
    lengths = [seconds_of_silence(mailer, silent_relay) for _ in range(3)]
    assert max(lengths) >= seconds - 0.01
    assert min(lengths) < 9  # the default would take 10 s
    assert setting.query() == [VALUE, "REG_SZ", text]


def test_a_missing_setting_is_written_with_its_key(mailer, silent_relay, setting):
    outcome = mailer.send(gateway=silent_relay.address)
    assert outcome.exit_code == 1
    assert silent_relay.next_session().seconds >= 9.95
    assert setting.query() == [VALUE, "REG_SZ", "10000"]
